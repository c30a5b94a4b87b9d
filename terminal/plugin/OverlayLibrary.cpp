#include "terminal/plugin/OverlayLibrary.h"

#include <QCoreApplication>
#include <QJsonDocument>

namespace Terminal {

namespace {

Loaded<OverlayLibrary> failure(const char *source, const QString &file, const QString &reason)
{
    return Loaded<OverlayLibrary>::failure(
        QCoreApplication::translate("OverlayLibrary", source).arg(file, reason));
}

} // namespace

Loaded<OverlayLibrary> OverlayLibrary::open(const QString &file)
{
    // Qt code of the library may stay registered with the application, so it is never unloaded.
    QLibrary library(file);
    if (!library.load()) {
        return failure(QT_TRANSLATE_NOOP("OverlayLibrary", "%1: cannot be loaded as overlay library: %2"),
                       file, library.errorString());
    }
    const auto factory = reinterpret_cast<Factory>(library.resolve("CreateChartObject"));
    if (factory == nullptr) {
        return failure(QT_TRANSLATE_NOOP("OverlayLibrary", "%1: is no overlay library: %2"), file,
                       library.errorString());
    }
    OverlayLibrary loaded;
    loaded.m_factory = factory;
    return loaded;
}

std::shared_ptr<OverlayHandle> OverlayLibrary::create(Korvane::IChartAxis &axis,
                                                      const QJsonObject &configuration) const
{
    const QByteArray json = QJsonDocument(configuration).toJson(QJsonDocument::Compact);
    Korvane::IChartObject *const object = m_factory(axis, json.constData());
    return object == nullptr ? nullptr : std::make_shared<OverlayHandle>(object);
}

} // namespace Terminal
