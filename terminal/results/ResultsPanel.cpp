#include "terminal/results/ResultsPanel.h"

#include "terminal/results/ResultTitles.h"
#include "terminal/results/ResultsView.h"
#include "terminal/trade/PlainText.h"
#include "terminal/trade/ShownAmount.h"
#include "terminal/trade/TradeRecords.h"
#include "trading/ModuleVocabulary.h"

#include <QComboBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

namespace Terminal {

namespace {

constexpr int panelHeight = 190;

constexpr const char *methods[] = {Trading::CostWords::AVERAGE, Trading::CostWords::DILUTED,
                                   Trading::CostWords::FIFO};

/// As the list of choices has them: what is asked for most comes first.
constexpr ResultGroup groups[] = {ResultGroup::Security, ResultGroup::Month, ResultGroup::Year,
                                  ResultGroup::Sale, ResultGroup::Trip};

std::optional<Trading::TradingDate> dayOf(QString dashed)
{
    return Trading::TradingDate::ofText(dashed.remove(QLatin1Char('-')));
}

/// The first day of a month, "2024-01", or of a year, "2024".
std::optional<Trading::TradingDate> firstDayOf(const QString &period)
{
    return dayOf(period + QStringLiteral("-01-01").left(10 - period.size()));
}

/// A screen reader calls a list of choices what is chosen, and reads the tool tip for what it is there.
void explain(QComboBox *choices, const QString &purpose)
{
    choices->setAccessibleName(purpose);
    choices->setToolTip(purpose);
}

} // namespace

ResultsPanel::ResultsPanel(QWidget *parent)
    : QWidget(parent),
      m_view(new ResultsView(&m_model)),
      m_groups(new QComboBox),
      m_methods(new QComboBox),
      m_methodsCaption(new QLabel),
      m_caption(new QLabel),
      m_sum(new QLabel),
      m_export(new QPushButton)
{
    setUpChoices();
    for (QLabel *const label : {m_methodsCaption, m_caption, m_sum}) {
        label->setTextFormat(Qt::PlainText);
    }
    m_sum->setObjectName(QStringLiteral("panelCaption"));
    for (QLabel *const label : {m_caption, m_sum}) { // a long text does not make the window wide
        label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    }
    auto *const choices = new QHBoxLayout;
    constexpr int margin = 8;
    choices->setContentsMargins(margin, margin / 2, margin, margin / 2);
    choices->setSpacing(margin);
    choices->addWidget(m_groups);
    choices->addWidget(m_methodsCaption);
    choices->addWidget(m_methods);
    choices->addWidget(m_caption, 1);
    choices->addWidget(m_export);
    auto *const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(choices);
    column->addWidget(m_view, 1);
    column->addWidget(m_sum);
    connect(m_view, &ResultsView::placeAsked, this, &ResultsPanel::askForPlace);
    connect(m_view, &ResultsView::orderAsked, this, &ResultsPanel::setWish);
    connect(&m_model, &ResultsModel::wholeChanged, this, &ResultsPanel::showWhole);
    connect(m_export, &QPushButton::clicked, this, &ResultsPanel::exportAsked);
    showTexts();
}

void ResultsPanel::setUpChoices()
{
    m_groups->setObjectName(QStringLiteral("resultsGroups"));
    m_methods->setObjectName(QStringLiteral("resultsMethods"));
    m_export->setObjectName(QStringLiteral("resultsExport"));
    for (const ResultGroup group : groups) {
        m_groups->addItem(QString(), static_cast<int>(group));
    }
    for (const char *const word : methods) {
        m_methods->addItem(QString(), QLatin1String(word));
    }
    connect(m_groups, qOverload<int>(&QComboBox::activated), this,
            [this](int place) { setWish({static_cast<ResultGroup>(m_groups->itemData(place).toInt())}); });
    connect(m_methods, qOverload<int>(&QComboBox::activated), this, [this](int place) {
        const QString word = m_methods->itemData(place).toString();
        showWhole(); // until the module has confirmed it, costs are what they were
        if (word != m_model.whole().costMethod) {
            Q_EMIT costMethodChosen(word);
        }
    });
}

QSize ResultsPanel::sizeHint() const
{
    return {QWidget::sizeHint().width(), panelHeight};
}

void ResultsPanel::showList(ResultGroup group)
{
    m_groups->setCurrentIndex(m_groups->findData(static_cast<int>(group)));
    setWish({group});
}

void ResultsPanel::setWish(const ResultsWish &wish)
{
    m_model.setWish(wish);
    m_view->scrollToTop();
    Q_EMIT wishChanged();
}

void ResultsPanel::askForPlace(int row)
{
    if (!m_model.hasRow(row)) {
        return;
    }
    const auto text = [this, row](ResultField field) { return m_model.cell(row, field); };
    switch (m_model.wish().group) {
    case ResultGroup::Sale:
        Q_EMIT placeAsked({text(ResultField::Code), dayOf(text(ResultField::Date))});
        return;
    case ResultGroup::Trip: {
        const auto closed = dayOf(text(ResultField::Closed));
        Q_EMIT placeAsked({text(ResultField::Code), closed ? closed : dayOf(text(ResultField::Opened))});
        return;
    }
    case ResultGroup::Security:
        Q_EMIT placeAsked({text(ResultField::Code), {}});
        return;
    case ResultGroup::Month:
        Q_EMIT placeAsked({{}, firstDayOf(text(ResultField::Month))});
        return;
    case ResultGroup::Year:
        Q_EMIT placeAsked({{}, firstDayOf(text(ResultField::Year))});
        return;
    }
}

void ResultsPanel::setAnswering(bool isAnswering)
{
    m_isAnswering = isAnswering;
    showWhole();
}

void ResultsPanel::setRefusal(const QString &reason)
{
    m_refusal = reason;
    showWhole();
}

void ResultsPanel::setNews(const QString &news)
{
    m_news = news;
    showWhole();
}

void ResultsPanel::setTheme(const ChartTheme &theme)
{
    m_model.setTheme(theme);
}

void ResultsPanel::setAmountsHidden(bool hidden)
{
    m_hidesAmounts = hidden;
    m_model.setAmountsHidden(hidden);
    showWhole();
}

QString ResultsPanel::captionText() const
{
    const ResultsPart &whole = m_model.whole();
    if (!m_isAnswering) {
        return tr("no answer from the trading module");
    }
    if (!m_refusal.isEmpty()) {
        return tr("refused: %1").arg(plainText(withoutFigures(m_refusal, m_hidesAmounts)));
    }
    if (!whole.incomplete.isEmpty()) {
        return tr("earlier statements are missing: %1")
            .arg(plainText(whole.incomplete.join(QStringLiteral(", "))));
    }
    return m_news;
}

/// The sums that the list has: what was earned first, for a narrow window shows the beginning.
QString ResultsPanel::sumText() const
{
    const ResultsPart &whole = m_model.whole();
    const auto &fields = Trading::fieldsOf(whole.wish.group);
    QStringList earned;
    QStringList others;
    for (size_t place = 0; place < fields.size(); ++place) {
        const Trading::ResultColumn &column = Trading::columnOf(fields[place]);
        const QString text = whole.sum.value(static_cast<int>(place));
        if (column.isSummed && !text.isEmpty()) {
            const bool isEarned = column.kind == Trading::ResultKind::Gain;
            (isEarned ? earned : others).append(sumOf(column, text));
        }
    }
    return (QStringList(tr("Rows: %1").arg(QLocale(QLocale::English).toString(whole.count))) + earned +
            others)
        .join(QStringLiteral(u" · "));
}

QString ResultsPanel::sumOf(const Trading::ResultColumn &column, const QString &text) const
{
    const bool isHidden = m_hidesAmounts && isAmount(column.kind);
    return QStringLiteral("%1 %2").arg(titleOf(column.field),
                                       shownAmount(shownCell(column.field, text), isHidden));
}

void ResultsPanel::showWhole()
{
    const ResultsPart &whole = m_model.whole();
    m_methods->setCurrentIndex(m_methods->findData(whole.costMethod));
    m_methods->setEnabled(m_isAnswering);
    m_export->setEnabled(m_isAnswering && whole.count > 0);
    m_caption->setText(captionText());
    m_caption->setToolTip(plainTip(m_caption->text()));
    m_sum->setText(sumText());
    m_sum->setToolTip(plainTip(m_sum->text()));
}

void ResultsPanel::showTexts()
{
    for (int place = 0; place < m_groups->count(); ++place) {
        m_groups->setItemText(place, titleOf(static_cast<ResultGroup>(m_groups->itemData(place).toInt())));
    }
    for (int place = 0; place < m_methods->count(); ++place) {
        m_methods->setItemText(place, costMethodText(m_methods->itemData(place).toString()));
    }
    m_methodsCaption->setText(tr("Cost:"));
    m_export->setText(tr("Export CSV"));
    explain(m_groups, tr("What a row stands for"));
    explain(m_methods, tr("How costs are reckoned"));
    m_view->setAccessibleName(tr("Results"));
    showWhole();
}

void ResultsPanel::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        m_model.retranslate();
        showTexts();
    }
    QWidget::changeEvent(event);
}

} // namespace Terminal
