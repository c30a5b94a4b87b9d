#include "terminal/ui/ViewMenu.h"

#include <QEvent>

namespace Terminal {

ViewMenu::ViewMenu(const TerminalOptions &options, QWidget *parent)
    : QMenu(parent),
      m_language(options.language),
      m_adjusted(addToggle(options.prices == PriceView::Adjusted)),
      m_rise(addToggle(options.riseColour == RiseColour::Green)),
      m_dark(addToggle(options.theme == ThemeKind::Dark)),
      m_languages(addAction(QString())),
      m_export(addAction(QString()))
{
    m_adjusted->setShortcut(Qt::CTRL + Qt::Key_F);
    m_export->setShortcut(QKeySequence::Save);
    connect(m_adjusted, &QAction::triggered, this,
            [this](bool adjusted) { Q_EMIT pricesChosen(adjusted ? PriceView::Adjusted : PriceView::Raw); });
    connect(m_rise, &QAction::toggled, this,
            [this](bool green) { Q_EMIT riseColourChosen(green ? RiseColour::Green : RiseColour::Red); });
    connect(m_dark, &QAction::toggled, this,
            [this](bool dark) { Q_EMIT themeChosen(dark ? ThemeKind::Dark : ThemeKind::Light); });
    connect(m_languages, &QAction::triggered, this, [this] {
        m_language = otherLanguage();
        Q_EMIT languageChosen(m_language);
        showTexts();
    });
    connect(m_export, &QAction::triggered, this, &ViewMenu::exportAsked);
    showTexts();
}

void ViewMenu::showPrices(PriceView view)
{
    m_adjusted->setChecked(view == PriceView::Adjusted);
}

QAction *ViewMenu::addToggle(bool checked)
{
    QAction *const action = addAction(QString());
    action->setCheckable(true);
    action->setChecked(checked);
    return action;
}

QString ViewMenu::otherLanguage() const
{
    return m_language == QLatin1String("zh") ? QStringLiteral("en") : QStringLiteral("zh");
}

void ViewMenu::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        showTexts();
    }
    QMenu::changeEvent(event);
}

void ViewMenu::showTexts()
{
    setTitle(tr("View"));
    m_adjusted->setText(tr("Adjusted prices"));
    m_rise->setText(tr("Green rises"));
    m_dark->setText(tr("Dark"));
    // Each language by its own name, for those who read no other.
    m_languages->setText(otherLanguage() == QLatin1String("en") ? QStringLiteral("English")
                                                                : QStringLiteral(u"中文"));
    m_export->setText(tr("Export chart"));
}

} // namespace Terminal
