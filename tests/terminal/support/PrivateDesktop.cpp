#include "tests/terminal/support/PrivateDesktop.h"

#include "tests/terminal/support/SessionBus.h"

#include <QFile>
#include <QStandardPaths>
#include <QtEndian>

namespace Terminal {

QString PrivateDesktop::missing()
{
    for (const char *const program : {"Xvfb", "dbus-daemon", "xdotool"}) {
        if (QStandardPaths::findExecutable(QLatin1String(program)).isEmpty()) {
            return QLatin1String(program);
        }
    }
    const bool hasReaders = QFile::exists(QStringLiteral("/usr/share/dbus-1/services/org.a11y.Bus.service"));
    return hasReaders ? QString() : QStringLiteral("the accessibility bus (at-spi2-core)");
}

PrivateDesktop::PrivateDesktop(const QSize &screen)
{
    const QString pixels = QStringLiteral("%1x%2x24").arg(screen.width()).arg(screen.height());
    const QString number = startAndHear(
        &m_screen, QStringLiteral("Xvfb"),
        {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"), QStringLiteral("0"),
         pixels, QStringLiteral("-dpi"), QStringLiteral("96"), QStringLiteral("-nolisten"),
         QStringLiteral("tcp"), QStringLiteral("-fbdir"), m_folder.path()});
    m_display = QLatin1Char(':') + number;
    m_busAddress = startSessionBus(&m_bus, m_folder.path());
}

PrivateDesktop::~PrivateDesktop()
{
    endProcess(&m_bus);
    endProcess(&m_screen);
}

QProcessEnvironment PrivateDesktop::environment(QProcessEnvironment base) const
{
    base.insert(QStringLiteral("DISPLAY"), m_display);
    base.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    base.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), m_busAddress);
    base.insert(QStringLiteral("QT_LINUX_ACCESSIBILITY_ALWAYS_ON"), QStringLiteral("1"));
    base.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("detect_leaks=0")); // the platform's, not ours
    return base;
}

void PrivateDesktop::run(const QStringList &arguments) const
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), m_display);
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral("xdotool"), arguments);
    EXPECT_TRUE(process.waitForFinished(20000)) << qPrintable(arguments.join(QLatin1Char(' ')));
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
}

void PrivateDesktop::focusWindow(const QString &title) const
{
    run({QStringLiteral("search"), QStringLiteral("--sync"), QStringLiteral("--onlyvisible"),
         QStringLiteral("--limit"), QStringLiteral("1"), QStringLiteral("--name"), title,
         QStringLiteral("windowfocus"), QStringLiteral("--sync")});
}

void PrivateDesktop::press(const QStringList &keys) const
{
    run(QStringList{QStringLiteral("key")} + keys);
}

void PrivateDesktop::type(const QString &text) const
{
    run({QStringLiteral("type"), text});
}

/// The screen's memory is a file in the form of xwd: a header in big-endian words, colours, pixels.
QImage PrivateDesktop::picture() const
{
    enum Word { HeaderSize = 0, Width = 4, Height = 5, BytesPerLine = 12, ColourCount = 19 };
    constexpr int colourBytes = 12;
    QFile file(m_folder.filePath(QStringLiteral("Xvfb_screen0")));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    const auto word = [&bytes](Word place) {
        return qFromBigEndian<int>(bytes.constData() + static_cast<size_t>(place) * sizeof(int));
    };
    const int pixels = word(HeaderSize) + word(ColourCount) * colourBytes;
    return QImage(reinterpret_cast<const uchar *>(bytes.constData()) + pixels, word(Width), word(Height),
                  word(BytesPerLine), QImage::Format_RGB32)
        .copy();
}

} // namespace Terminal
