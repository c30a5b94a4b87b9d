#include "terminal/plugin/OverlayHost.h"

#include "terminal/chart/view/ChartSummary.h"
#include "terminal/chart/view/ChartView.h"
#include "terminal/plugin/HostRecords.h"
#include "tradechartobject/common/TradeVocabulary.h"

#include <algorithm>

namespace Terminal {

namespace {

// Overlays ask again for their data only as long as they are recalculated, even if no bar arrives.
constexpr int heartbeatMilliseconds = 5000;

QJsonObject configurationOf(const OverlayKind &kind, int refreshSeconds)
{
    return {{QLatin1String(TradeChart::TradeKeyFields::ALGORITHMTYPE), kind.type},
            {QLatin1String(TradeChart::TradeKeyFields::AUTOREFRESHTIME), refreshSeconds}};
}

} // namespace

OverlayHost::OverlayHost(ChartView *chart, UserPrompts *prompts, const OverlayLibrary &library,
                         BusGates gates, const QByteArray &screenId, int refreshSeconds)
    : m_chart(chart),
      m_library(library),
      m_gates(std::move(gates)),
      m_refreshSeconds(refreshSeconds),
      m_axis(chart, prompts, screenId, nullptr)
{
    m_updateTimer.setSingleShot(true);
    m_heartbeat.start(heartbeatMilliseconds);
    connect(&m_axis, &HostAxis::updateRequested, this, &OverlayHost::queueUpdate);
    connect(&m_updateTimer, &QTimer::timeout, this, &OverlayHost::runUpdates);
    connect(&m_heartbeat, &QTimer::timeout, this, &OverlayHost::calcAll);
    connect(chart, &ChartView::dataChanged, this, &OverlayHost::showLoadedBars);
    connect(chart, &ChartView::barsAppended, this, &OverlayHost::takeAppendedBars);
    chart->setPriceWishes([this] { return priceWishes(); });
    chart->setOverlaySummary([this] { return summary(); });
    showLoadedBars();
}

OverlayHost::~OverlayHost()
{
    m_chart->setPriceWishes({});
    m_chart->setOverlaySummary({});
    endAll();
}

void OverlayHost::endAll()
{
    for (Entry &entry : m_entries) {
        end(&entry);
    }
    m_entries.clear();
}

void OverlayHost::end(Entry *entry)
{
    // A call into the overlay may still be on the stack, below a menu or a dialog; it holds on to the
    // overlay and lets go of it last.
    entry->item.reset();
    entry->overlay->retire();
    entry->overlay.reset();
}

bool OverlayHost::setShown(const OverlayKind &kind, bool shown)
{
    if (shown == isShown(kind)) {
        return true;
    }
    if (shown) {
        Entry entry{&kind, nullptr, nullptr};
        if (!make(&entry)) {
            return false;
        }
        m_entries.push_back(std::move(entry));
        awaitJoining(m_entries.back());
    } else {
        const auto entry = std::find_if(m_entries.begin(), m_entries.end(),
                                        [&kind](const Entry &candidate) { return candidate.kind == &kind; });
        end(&*entry);
        m_entries.erase(entry);
    }
    m_chart->refit();
    return true;
}

bool OverlayHost::isShown(const OverlayKind &kind) const
{
    return std::any_of(m_entries.begin(), m_entries.end(),
                       [&kind](const Entry &entry) { return entry.kind == &kind; });
}

void OverlayHost::setAmountsHidden(bool hidden)
{
    m_hidesAmounts = hidden;
    m_axis.setAmountsHidden(hidden);
    for (Entry &entry : m_entries) {
        entry.item->setAmountsHidden(hidden);
    }
    m_chart->refit();
}

const DrawnMarks *OverlayHost::drawnMarks(const OverlayKind &kind) const
{
    const auto entry = std::find_if(m_entries.begin(), m_entries.end(),
                                    [&kind](const Entry &candidate) { return candidate.kind == &kind; });
    return entry == m_entries.end() ? nullptr : &entry->item->marks();
}

bool OverlayHost::make(Entry *entry)
{
    const QJsonObject configuration = configurationOf(*entry->kind, m_refreshSeconds);
    entry->overlay = entry->kind->isCombined() ? m_library.createCombined(m_axis, configuration)
                                               : m_library.create(m_axis, configuration);
    if (!entry->overlay) {
        return false;
    }
    entry->joined = false;
    entry->waits = false;
    entry->item = std::make_unique<OverlayItem>(m_chart, entry->overlay, &m_sprites);
    entry->item->setAmountsHidden(m_hidesAmounts);
    entry->item->attach(m_chart);
    return true;
}

void OverlayHost::awaitJoining(const Entry &entry)
{
    m_gates.joined(this,
                   [this, overlay = std::weak_ptr<OverlayHandle>(entry.overlay)] { markJoined(overlay); });
}

void OverlayHost::markJoined(const std::weak_ptr<OverlayHandle> &overlay)
{
    if (Entry *const entry = find(overlay)) {
        entry->joined = true;
        calc(entry);
        m_chart->refit();
    }
}

OverlayHost::Entry *OverlayHost::find(const std::weak_ptr<OverlayHandle> &overlay)
{
    const std::shared_ptr<OverlayHandle> wanted = overlay.lock();
    const auto entry = std::find_if(m_entries.begin(), m_entries.end(), [&wanted](const Entry &candidate) {
        return wanted && candidate.overlay == wanted;
    });
    return entry == m_entries.end() ? nullptr : &*entry;
}

void OverlayHost::renew()
{
    for (Entry &entry : m_entries) {
        if (entry.kind->boundToRange) {
            renewEntry(&entry);
        }
    }
    calcAll();
}

void OverlayHost::renewEntry(Entry *entry)
{
    end(entry);
    make(entry);
    awaitJoining(*entry);
}

void OverlayHost::renewCombined(const QString &code)
{
    for (Entry &entry : m_entries) {
        if (entry.kind->isCombined() && !entry.kind->questions.empty() && shows(code)) {
            renewEntry(&entry);
        }
    }
}

void OverlayHost::showHeard(const QString &code)
{
    for (Entry &entry : m_entries) {
        if (entry.kind->isCombined() && shows(code)) {
            calc(&entry);
        }
    }
}

bool OverlayHost::shows(const QString &code) const
{
    return m_chart->data().security.code == code;
}

void OverlayHost::showLoadedBars()
{
    const ChartData &data = m_chart->data();
    m_bars = hostBars(data.bars);
    m_security = hostSecurity(data.security, securityIdentity(data.security));
    renew();
}

/// Records of the old bars keep their places, so the overlays stay as they are.
void OverlayHost::takeAppendedBars()
{
    const Bars &bars = m_chart->data().bars;
    std::transform(bars.begin() + static_cast<std::ptrdiff_t>(m_bars.size()), bars.end(),
                   std::back_inserter(m_bars), hostBar);
    for (Entry &entry : m_entries) {
        calc(&entry);
    }
}

void OverlayHost::calc(Entry *entry)
{
    if (entry->kind->isCombined()) {
        calcWhenAnswered(entry);
    } else {
        calcNow(*entry);
    }
}

/// A combined overlay may ask a question and block until it is answered.
void OverlayHost::calcWhenAnswered(Entry *entry)
{
    if (!entry->joined || entry->waits) {
        return;
    }
    entry->waits = true;
    m_gates.answered(this, [this, overlay = std::weak_ptr<OverlayHandle>(entry->overlay)] {
        if (Entry *const answered = find(overlay)) {
            answered->waits = false;
            calcNow(*answered);
            m_chart->refit();
            Q_EMIT updateAsked(answered->kind);
        }
    });
}

void OverlayHost::calcNow(const Entry &entry)
{
    const std::shared_ptr<OverlayHandle> overlay = entry.overlay;
    if (entry.joined && !m_bars.empty()) {
        overlay->calc(m_security, m_bars, overlayPeriod(m_chart->data().period));
    }
}

void OverlayHost::calcAll()
{
    for (Entry &entry : m_entries) {
        calc(&entry);
    }
    m_chart->refit();
}

std::vector<PriceSpan> OverlayHost::priceWishes() const
{
    std::vector<PriceSpan> wishes;
    for (const Entry &entry : m_entries) {
        Korvane::IChartObject *const object = entry.overlay->object();
        int unused = 0;
        object->calcRatio(0, 0);
        wishes.push_back({object->minimizeValue(unused), object->maximizeValue(unused)});
    }
    return wishes;
}

QString OverlayHost::summary()
{
    QStringList texts;
    const QString marksText = marksSummary(marks());
    if (!marksText.isEmpty()) {
        texts.append(marksText);
    }
    for (const Entry &entry : m_entries) {
        texts.append(entry.item->labels());
    }
    return texts.join(QStringLiteral("; "));
}

void OverlayHost::queueUpdate(Korvane::IChartObject *object)
{
    m_updates.insert(object);
    m_updateTimer.start(0);
    for (const Entry &entry : m_entries) {
        if (entry.overlay->object() == object) {
            Q_EMIT updateAsked(entry.kind);
        }
    }
}

void OverlayHost::runUpdates()
{
    m_updateTimer.stop();
    const QSet<Korvane::IChartObject *> updates = std::exchange(m_updates, {});
    for (Entry &entry : m_entries) {
        if (updates.contains(entry.overlay->object())) {
            calc(&entry);
        }
    }
    m_chart->refit();
}

bool OverlayHost::isOnPricePane(const QPointF &position) const
{
    const ChartGeometry &geometry = m_chart->chartGeometry();
    return geometry.hasScale() && position.y() >= geometry.top && position.y() <= geometry.bottom &&
           position.x() >= geometry.left && position.x() <= geometry.right;
}

/// An overlay that refused the loaded bars still has marks of others.
bool OverlayHost::takesClicks(const Entry &entry) const
{
    return !m_bars.empty() && static_cast<size_t>(entry.overlay->readableBars()) == m_bars.size();
}

const OverlayHost::Entry *OverlayHost::entryAt(const QPointF &position, QPointF *target) const
{
    if (!isOnPricePane(position)) {
        return nullptr;
    }
    for (auto entry = m_entries.rbegin(); entry != m_entries.rend(); ++entry) {
        if (!takesClicks(*entry)) {
            continue;
        }
        const std::optional<QPointF> mark = entry->item->marks().targetAt(position);
        *target = mark.value_or(position);
        if (mark || entry->overlay->object()->hitTest(position.x(), position.y()) == 0) {
            return &*entry;
        }
    }
    return nullptr;
}

bool OverlayHost::isHit(const QPointF &position)
{
    QPointF target;
    return entryAt(position, &target) != nullptr;
}

void OverlayHost::press(const QPointF &position, Qt::MouseButton button)
{
    QPointF target;
    const Entry *const entry = entryAt(position, &target);
    if (entry == nullptr) {
        return;
    }
    const std::shared_ptr<OverlayHandle> overlay = entry->overlay;
    m_axis.setListPlace(position);
    if (button == Qt::LeftButton) {
        overlay->object()->handleMousePress(target.x(), target.y());
    } else if (button == Qt::RightButton) {
        overlay->object()->handleMousePressR(target.x(), target.y());
    }
}

void OverlayHost::release(const QPointF &position, Qt::MouseButton button)
{
    QPointF target;
    const Entry *const entry = entryAt(position, &target);
    if (entry == nullptr) {
        return;
    }
    const std::shared_ptr<OverlayHandle> overlay = entry->overlay;
    if (button == Qt::LeftButton) {
        overlay->object()->handleMouseRelease(target.x(), target.y());
    } else if (button == Qt::RightButton) {
        overlay->object()->handleMouseReleaseR(target.x(), target.y());
    }
}

std::vector<ClickableMark> OverlayHost::marks()
{
    std::vector<ClickableMark> marks;
    for (const Entry &entry : m_entries) {
        if (takesClicks(entry)) {
            for (const DrawnMark &mark : entry.item->marks().all()) {
                marks.push_back(clickable(entry, mark));
            }
        }
    }
    return marks;
}

ClickableMark OverlayHost::clickable(const Entry &entry, const DrawnMark &mark)
{
    const QPointF target = mark.targetNear(mark.box.center());
    const QPointF place(mark.box.center().x(), mark.box.bottom());
    return {mark.glyph, mark.count, static_cast<int>(&entry - m_entries.data()), mark.box,
            [this, weak = std::weak_ptr<OverlayHandle>(entry.overlay), target, place] {
                if (const std::shared_ptr<OverlayHandle> overlay = weak.lock()) {
                    m_axis.setListPlace(place);
                    overlay->object()->handleMousePress(target.x(), target.y());
                }
            }};
}

void OverlayHost::move(const QPointF &position)
{
    for (const Entry &entry : m_entries) {
        const std::shared_ptr<OverlayHandle> overlay = entry.overlay;
        overlay->object()->handleMouseMove(position.x(), position.y());
    }
}

} // namespace Terminal
