#include "hostcheck/RealLibrary.h"

#include "hostcheck/Report.h"

#include <QFile>
#include <QFileInfo>
#include <QLibrary>

#include <dlfcn.h>

namespace HostCheck {

namespace {

/// The checker's own file, also where a link leads to it.
QFileInfo ownFile()
{
    Dl_info info{};
    dladdr(reinterpret_cast<const void *>(&RealLibrary::get), &info);
    return QFileInfo(QFileInfo(QFile::decodeName(info.dli_fname)).canonicalFilePath());
}

QString fileToLoad()
{
    const QString named = qEnvironmentVariable("TRADECHARTOBJECT_CHECKED");
    return named.isEmpty() ? ownFile().path() + QStringLiteral("/libtradechartobject") : named;
}

RealLibrary load()
{
    QLibrary library(fileToLoad());
    library.setLoadHints(QLibrary::PreventUnloadHint);
    RealLibrary real;
    real.create = reinterpret_cast<RealLibrary::Factory>(library.resolve("CreateChartObject"));
    real.constructCombined = reinterpret_cast<Korvane::CombinedOverlay::Constructor>(
        library.resolve(Korvane::CombinedOverlay::constructor));
    if (real.create == nullptr) {
        Report::ofProcess().tell(Rule::LibraryMissing, "the first overlay",
                                 library.errorString().toStdString());
    }
    return real;
}

} // namespace

const RealLibrary &RealLibrary::get()
{
    static const RealLibrary real = load();
    return real;
}

} // namespace HostCheck
