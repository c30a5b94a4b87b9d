// Looks for bytes that break the property FUZZ_PROPERTY. The preset `fuzz` builds it once for each of them.
#include "tests/fuzz/Properties.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qputenv("TZ", "Asia/Shanghai");
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(QDir::tempPath() + QStringLiteral("/no-settings")));
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    static QCoreApplication application(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    // A copy without an end mark: reading one byte too many is a fault, too.
    const auto bytes = QByteArray::fromRawData(reinterpret_cast<const char *>(data), static_cast<int>(size));
    try {
        FUZZ_PROPERTY(bytes);
    } catch (const Broken &broken) {
        std::fprintf(stderr, "broken: %s\n", broken.what());
        std::abort();
    }
    return 0;
}
