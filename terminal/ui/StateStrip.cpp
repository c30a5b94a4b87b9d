#include "terminal/ui/StateStrip.h"

#include "terminal/trade/ElidedLabel.h"
#include "terminal/trade/PlainText.h"

#include <QLabel>
#include <QStyle>
#include <QVariant>

namespace Terminal {

namespace {

constexpr int betweenLabels = 12;           ///< pixels, with what the bar leaves at its ends
constexpr auto troubleProperty = "trouble"; // known to the style sheet of the window

void setState(QLabel *label, const QString &text, const QString &details, bool isTrouble)
{
    label->setText(text);
    label->setToolTip(plainTip(details));
    label->setAccessibleName(text);
    label->setAccessibleDescription(details);
    if (label->property(troubleProperty).toBool() != isTrouble) {
        label->setProperty(troubleProperty, isTrouble);
        label->style()->unpolish(label); // a style sheet does not look at a property again by itself
        label->style()->polish(label);
    }
}

} // namespace

StateStrip::StateStrip(QWidget *parent)
    : QStatusBar(parent),
      m_hours(new ElidedLabel),
      m_market(new ElidedLabel),
      m_bus(new ElidedLabel),
      m_module(new QLabel)
{
    setObjectName(QStringLiteral("stateStrip"));
    setSizeGripEnabled(false);
    for (const OverlayKind &kind : overlayKinds()) {
        auto *const label = new ElidedLabel;
        label->setObjectName(QStringLiteral("state-") + QLatin1String(kind.word));
        m_overlays.push_back(label);
        addWidget(label);
        label->hide();
    }
    m_hours->setObjectName(QStringLiteral("state-hours"));
    addPermanentWidget(m_hours);
    m_hours->hide();
    m_market->setObjectName(QStringLiteral("state-market"));
    addPermanentWidget(m_market);
    m_market->hide();
    m_bus->setObjectName(QStringLiteral("state-bus"));
    addPermanentWidget(m_bus);
    m_module->setTextFormat(Qt::PlainText); // never cut: it is why the others stand as they do
    m_module->setObjectName(QStringLiteral("state-module"));
    addPermanentWidget(m_module);
    showBus({});
    showModule({});
}

void StateStrip::showOverlay(const OverlayKind &kind, const QString &state, const QStringList &details,
                             bool isTrouble)
{
    QLabel *const label = m_overlays[static_cast<size_t>(&kind - overlayKinds().data())];
    setState(label, tr("%1: %2").arg(overlayTitle(kind), state), details.join(QLatin1Char('\n')), isTrouble);
    label->show();
    makeRoom();
}

void StateStrip::hideOverlay(const OverlayKind &kind)
{
    m_overlays[static_cast<size_t>(&kind - overlayKinds().data())]->hide();
    makeRoom();
}

void StateStrip::showHours(const QString &state, const QString &hours)
{
    setState(m_hours, state, hours, false);
    makeRoom();
}

void StateStrip::resizeEvent(QResizeEvent *event)
{
    QStatusBar::resizeEvent(event);
    makeRoom();
}

/// The hours are known besides: they go before anything else is cut.
void StateStrip::makeRoom()
{
    int needed = m_hours->sizeHint().width();
    for (const QLabel *const label : findChildren<QLabel *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (label != m_hours && !label->isHidden()) {
            needed += label->sizeHint().width() + betweenLabels;
        }
    }
    m_hours->setVisible(!m_hours->text().isEmpty() && needed <= width());
}

void StateStrip::showMarket(const MarketWatch &market)
{
    setState(m_market, marketStateText(market), marketStateDetails(market),
             market.state() == MarketWatch::State::Silent);
    m_market->setVisible(!m_market->text().isEmpty());
    makeRoom();
}

void StateStrip::showBus(const BusState &bus)
{
    setState(m_bus, busStateText(bus), bus.reason, bus.isTrouble());
    m_bus->setVisible(!m_bus->text().isEmpty());
    makeRoom();
}

void StateStrip::showModule(const ModuleState &module)
{
    setState(m_module, moduleStateText(module), module.reason, module.isTrouble());
    makeRoom();
}

QStringList StateStrip::texts() const
{
    QStringList texts;
    for (const QLabel *const label : m_overlays) {
        if (!label->isHidden()) {
            texts.append(label->text());
        }
    }
    for (const QLabel *const label : {m_market, m_bus}) {
        if (!label->isHidden()) {
            texts.append(label->text());
        }
    }
    return texts + QStringList(m_module->text());
}

} // namespace Terminal
