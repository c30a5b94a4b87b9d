#include "terminal/ui/WindowSettings.h"

#include "terminal/trade/OrdersPanel.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QMainWindow>
#include <QScreen>
#include <QUrl>

namespace Terminal {

namespace {

const QString adjustedKey = QStringLiteral("adjusted");
const QString amountsKey = QStringLiteral("hide-amounts");
const QString askingKey = QStringLiteral("ask-before-sending");
const QString watchedKey = QStringLiteral("watch-list");
const QString soundKey = QStringLiteral("sound-when-dealt");
const QString notifyKey = QStringLiteral("notify-when-dealt");
const QString dataKey = QStringLiteral("account/data");
const QString ledgerKey = QStringLiteral("account/ledger");
const QString geometryKey = QStringLiteral("window/geometry");
const QString layoutKey = QStringLiteral("window/layout");
const QString panelKey = QStringLiteral("window/panel");

QString text(const char *source)
{
    return QCoreApplication::translate("WindowSettings", source);
}

void warn(const QSettings &settings, const QString &problem)
{
    qWarning("%s: %s", qUtf8Printable(settings.fileName()), qUtf8Printable(problem));
}

/// A replay has chosen the period by itself.
bool isNamed(const QString &option, const TerminalOptions &options)
{
    return options.given.contains(option) ||
           (option == QLatin1String("period") && options.given.contains(QStringLiteral("replay")));
}

} // namespace

WindowSettings::WindowSettings()
{
    if (m_settings.status() != QSettings::NoError) {
        warn(m_settings, text("the settings cannot be read; what is missing is as by default"));
    }
}

TerminalOptions WindowSettings::over(TerminalOptions options) const
{
    const QStringList names = rememberedWords(options).keys();
    for (const QString &name : names) {
        if (!m_settings.contains(name) || isNamed(name, options)) {
            continue;
        }
        const QString value = m_settings.value(name).toStringList().join(QLatin1Char(','));
        const QString allowed = takeOption(name, value, &options);
        if (!allowed.isEmpty()) {
            warn(m_settings,
                 text(R"("%1" is "%2", but must be %3; the default is taken)").arg(name, value, allowed));
        }
    }
    if (m_settings.value(adjustedKey).toBool()) {
        options.prices = PriceView::Adjusted;
    }
    options.hidesAmounts = options.hidesAmounts || m_settings.value(amountsKey).toBool();
    options.asksBeforeSending = m_settings.value(askingKey, options.asksBeforeSending).toBool();
    options.watched = m_settings.value(watchedKey, options.watched).toStringList();
    options.soundsWhenDealt = m_settings.value(soundKey, options.soundsWhenDealt).toBool();
    options.notifiesWhenDealt = m_settings.value(notifyKey, options.notifiesWhenDealt).toBool();
    return options;
}

AccountPlaces WindowSettings::places() const
{
    return {m_settings.value(dataKey).toString(), m_settings.value(ledgerKey).toString()};
}

/// Bars without a ledger are no account, a practice is none to come back to, and a password is not for a file
/// that others may read.
void WindowSettings::rememberPlaces(const TerminalOptions &options)
{
    if (options.ledger.isEmpty() || !options.practice.isEmpty() ||
        !QUrl(options.ledger).password().isEmpty()) {
        return;
    }
    const bool isFile = !options.ledger.contains(QLatin1String("://"));
    m_settings.setValue(dataKey, QDir(options.dataFolder).absolutePath());
    m_settings.setValue(ledgerKey, isFile ? QFileInfo(options.ledger).absoluteFilePath() : options.ledger);
}

void WindowSettings::restoreLayout(QMainWindow *window, const TerminalOptions &options) const
{
    if (!options.given.contains(QStringLiteral("size"))) {
        window->restoreGeometry(m_settings.value(geometryKey).toByteArray());
        window->resize(window->size().boundedTo(window->screen()->availableSize()));
    }
    window->restoreState(m_settings.value(layoutKey).toByteArray());
    if (auto *const panel = window->findChild<OrdersPanel *>()) {
        panel->restoreSharing(m_settings.value(panelKey).toByteArray());
    }
}

void WindowSettings::remember(const TerminalOptions &options, const QMainWindow &window)
{
    const QMap<QString, QString> words = rememberedWords(options);
    for (auto word = words.begin(); word != words.end(); ++word) {
        m_settings.setValue(word.key(), word.value());
    }
    m_settings.setValue(adjustedKey, options.prices == PriceView::Adjusted);
    rememberPlaces(options);
    m_settings.setValue(amountsKey, options.hidesAmounts);
    m_settings.setValue(askingKey, options.asksBeforeSending);
    m_settings.setValue(watchedKey, options.watched);
    m_settings.setValue(soundKey, options.soundsWhenDealt);
    m_settings.setValue(notifyKey, options.notifiesWhenDealt);
    m_settings.setValue(geometryKey, window.saveGeometry());
    m_settings.setValue(layoutKey, window.saveState());
    if (const auto *const panel = window.findChild<OrdersPanel *>()) {
        m_settings.setValue(panelKey, panel->sharing());
    }
    m_settings.sync();
    if (m_settings.status() == QSettings::AccessError) {
        warn(m_settings, text("the settings cannot be written"));
    }
}

} // namespace Terminal
