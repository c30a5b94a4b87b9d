#include "tests/terminal/support/RandomUser.h"

#include <QAction>
#include <QApplication>
#include <QGenericPlugin>
#include <QHash>
#include <QMainWindow>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>
#include <QTableView>
#include <QTest>
#include <QWheelEvent>

#include <atomic>
#include <chrono>

// Qt's own list of what a watching program is told, without a header that every machine has
extern quintptr Q_CORE_EXPORT qtHookData[];

namespace Terminal {

using namespace std::chrono_literals;

namespace {

/// Places in Qt's list, which tools that watch a program count on.
enum Hook { AddObject = 3, RemoveObject = 4 };

/// Objects come and go in every thread, and Qt tells of them without a place to put an object of ours.
std::atomic<int> &objects()
{
    static std::atomic<int> count{0};
    return count;
}

void countObjects()
{
    using Told = void (*)(QObject *);
    qtHookData[AddObject] = reinterpret_cast<quintptr>(static_cast<Told>([](QObject *) { ++objects(); }));
    qtHookData[RemoveObject] = reinterpret_cast<quintptr>(static_cast<Told>([](QObject *) { --objects(); }));
}

QHash<QString, QString> settingsIn(const QString &words)
{
    QHash<QString, QString> settings;
    const QStringList parts = words.split(QLatin1Char(':'));
    for (const QString &part : parts) {
        settings.insert(part.section(QLatin1Char('='), 0, 0), part.section(QLatin1Char('='), 1));
    }
    return settings;
}

/// The window that trades: the start page is none.
QMainWindow *shownWindow()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *const window : windows) {
        if (auto *const shown = qobject_cast<QMainWindow *>(window); shown != nullptr && shown->isVisible()) {
            return shown;
        }
    }
    return nullptr;
}

QAction *actionWith(const QWidget *window, const QKeySequence &keys)
{
    const auto actions = window->findChildren<QAction *>();
    for (QAction *const action : actions) {
        if (action->shortcut() == keys) {
            return action;
        }
    }
    return nullptr;
}

} // namespace

RandomUser::RandomUser(const QString &words)
{
    const QHash<QString, QString> settings = settingsIn(words);
    m_random.seed(settings.value(QStringLiteral("seed")).toUInt());
    m_journal.setFileName(settings.value(QStringLiteral("journal")));
    if (!m_journal.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered)) {
        qFatal("the random user's journal cannot be written");
    }
    countObjects();
    // an act that asks a question goes on in its event loop, and so must its user
    connect(&m_nextAct, &QTimer::timeout, this, &RandomUser::act, Qt::QueuedConnection);
    connect(&m_nextCount, &QTimer::timeout, this, &RandomUser::count);
    m_nextAct.start(
        std::chrono::milliseconds(settings.value(QStringLiteral("pause"), QStringLiteral("200")).toInt()));
    m_nextCount.start(5s);
    const int life = settings.value(QStringLiteral("begins-again")).toInt();
    m_isPractice = life > 0;
    if (m_isPractice) {
        m_nextPractice.setSingleShot(true);
        m_nextPractice.start(std::chrono::seconds(life));
    }
}

int RandomUser::between(int least, int most)
{
    return static_cast<int>(std::uniform_int_distribution<>(least, most)(m_random));
}

void RandomUser::count()
{
    const QString line = QStringLiteral("%1 %2 %3 %4 %5\n")
                             .arg(objects().load())
                             .arg(QApplication::allWidgets().size())
                             .arg(m_acts)
                             .arg(m_orders)
                             .arg(m_cancellations);
    m_journal.write(line.toLatin1());
}

void RandomUser::act()
{
    ++m_acts;
    if (QWidget *const popup = QApplication::activePopupWidget()) {
        QTest::keyClick(popup, Qt::Key_Escape);
    } else if (QWidget *const asked = QApplication::activeModalWidget()) {
        answer(asked);
    } else if (QMainWindow *const window = shownWindow()) {
        actIn(window);
    }
}

/// Questions are answered this way or that; nothing is chosen in dialogs that begin something else.
void RandomUser::answer(QWidget *asked)
{
    if (auto *const box = qobject_cast<QMessageBox *>(asked)) {
        answerBox(box);
    } else if (between(1, 4) == 1) {
        QTest::keyClick(asked, Qt::Key_Escape);
    } else {
        QTest::keyClick(asked, between(0, 1) == 0 ? Qt::Key_Tab : Qt::Key_Down);
    }
}

void RandomUser::answerBox(QMessageBox *box)
{
    const QList<QAbstractButton *> buttons = box->buttons();
    QAbstractButton *chosen = buttons.at(between(0, buttons.size() - 1));
    if (box->objectName() == QLatin1String("restartPractice")) {
        for (QAbstractButton *const button : buttons) {
            chosen = box->buttonRole(button) == QMessageBox::DestructiveRole ? button : chosen;
        }
        m_nextPractice.start(); // from now on
    }
    chosen->click();
}

void RandomUser::actIn(QMainWindow *window)
{
    static constexpr Deed deeds[] = {
        {30, &RandomUser::turnTheChart},  {10, &RandomUser::turnTheWheel}, {6, &RandomUser::dragTheChart},
        {15, &RandomUser::point},         {6, &RandomUser::switchPeriod},  {4, &RandomUser::switchOverlay},
        {6, &RandomUser::switchSecurity}, {5, &RandomUser::switchView},    {6, &RandomUser::openList},
        {4, &RandomUser::openDialog},     {3, &RandomUser::changeLooks},   {9, &RandomUser::placeOrder},
        {8, &RandomUser::cancelOrder},    {2, &RandomUser::pausePractice},
    };
    m_window = window;
    if (QApplication::activeWindow() == nullptr) {
        window->activateWindow();
        QApplication::setActiveWindow(window); // without a window manager nobody else says so
    }
    if (m_isPractice && !m_nextPractice.isActive()) {
        chart()->setFocus();
        press("Ctrl+Home");
        return;
    }
    int all = 0;
    for (const Deed &deed : deeds) {
        all += deed.weight;
    }
    int left = between(1, all);
    for (const Deed &deed : deeds) {
        left -= deed.weight;
        if (left <= 0) {
            (this->*deed.act)();
            return;
        }
    }
}

QWidget *RandomUser::chart() const
{
    const auto widgets = m_window->findChildren<QWidget *>();
    for (QWidget *const widget : widgets) {
        if (widget->inherits("Terminal::ChartView")) {
            return widget;
        }
    }
    return m_window;
}

void RandomUser::press(const char *keys)
{
    const QKeySequence sequence(QString::fromLatin1(keys));
    QWidget *const focus = m_window->focusWidget();
    const auto modifiers =
        static_cast<Qt::KeyboardModifiers>(sequence[0] & static_cast<int>(Qt::KeyboardModifierMask));
    const auto key = static_cast<Qt::Key>(sequence[0] & ~static_cast<int>(Qt::KeyboardModifierMask));
    QTest::keyClick(focus != nullptr ? focus : m_window, key, modifiers);
}

void RandomUser::type(const QString &text)
{
    if (QWidget *const focus = m_window->focusWidget()) {
        QTest::keyClicks(focus, text);
    }
}

void RandomUser::turnTheChart()
{
    static constexpr const char *keys[] = {"Left", "Right", "Up", "Down", "PgUp",   "PgDown", "Home",
                                           "End",  "N",     "P",  "N",    "Return", "Esc"};
    chart()->setFocus();
    press(keys[between(0, static_cast<int>(std::size(keys)) - 1)]);
}

void RandomUser::turnTheWheel()
{
    QWidget *const below = chart();
    const QPoint place(between(1, below->width()), between(1, below->height()));
    QWidget *const target = below->childAt(place) != nullptr ? below->childAt(place) : below;
    const QPoint inside = target->mapFrom(below, place);
    QWheelEvent event(inside, target->mapToGlobal(inside), QPoint(),
                      QPoint(0, between(0, 1) == 0 ? 120 : -120), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(target, &event);
}

void RandomUser::dragTheChart()
{
    QWidget *const below = chart();
    const QPoint from(between(50, 400), between(50, 300));
    QWidget *const target = below->childAt(from) != nullptr ? below->childAt(from) : below;
    const QPoint begin = target->mapFrom(below, from);
    const QPoint end = begin + QPoint(between(-40, 40), between(-40, 40));
    QTest::mousePress(target, Qt::LeftButton, Qt::NoModifier, begin);
    QMouseEvent move(QEvent::MouseMove, end, target->mapToGlobal(end), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QCoreApplication::sendEvent(target, &move);
    QTest::mouseRelease(target, Qt::LeftButton, Qt::NoModifier, end);
}

void RandomUser::point()
{
    QWidget *const below = chart();
    const QPoint place(between(1, below->width()), between(1, below->height()));
    QWidget *const target = below->childAt(place) != nullptr ? below->childAt(place) : below;
    const QPoint inside = target->mapFrom(below, place);
    QMouseEvent move(QEvent::MouseMove, inside, target->mapToGlobal(inside), Qt::NoButton, Qt::NoButton,
                     Qt::NoModifier);
    QCoreApplication::sendEvent(target, &move);
    if (between(1, 4) == 1) {
        QTest::mouseClick(target, Qt::LeftButton, Qt::NoModifier, inside);
    }
}

void RandomUser::switchPeriod()
{
    static constexpr const char *keys[] = {"Alt+1", "Alt+2", "Alt+3", "Alt+4", "Alt+4", "Alt+4"};
    press(keys[between(0, static_cast<int>(std::size(keys)) - 1)]);
}

void RandomUser::switchOverlay()
{
    static constexpr const char *keys[] = {"Ctrl+1", "Ctrl+2", "Ctrl+3"};
    press(keys[between(0, static_cast<int>(std::size(keys)) - 1)]);
}

void RandomUser::switchSecurity()
{
    static constexpr const char *codes[] = {"600519", "600536", "000001"};
    press("Ctrl+L");
    type(QLatin1String(codes[between(0, static_cast<int>(std::size(codes)) - 1)]));
    press("Return");
}

void RandomUser::switchView()
{
    static constexpr const char *keys[] = {"Ctrl+H", "Ctrl+D", "Ctrl+T", "Ctrl+F"};
    press(keys[between(0, static_cast<int>(std::size(keys)) - 1)]);
}

void RandomUser::openList()
{
    static constexpr const char *keys[] = {"F3", "F4", "F5", "F6"};
    press(keys[between(0, static_cast<int>(std::size(keys)) - 1)]);
}

/// Those of the menus, and the keys.
void RandomUser::openDialog()
{
    QList<QAction *> opening;
    const auto actions = m_window->findChildren<QAction *>();
    for (QAction *const action : actions) {
        const bool asks =
            action->text().endsWith(QLatin1String("...")) || action->text().endsWith(QChar(0x2026));
        if (action->shortcut() == QKeySequence(QStringLiteral("?")) || (asks && action->isEnabled())) {
            opening.append(action);
        }
    }
    if (!opening.isEmpty()) {
        opening.at(between(0, opening.size() - 1))->trigger();
    }
}

/// Theme, colours of rise and fall, language: the choices of the menu without a key of their own.
void RandomUser::changeLooks()
{
    const auto menus = m_window->findChildren<QMenu *>();
    for (QMenu *const menu : menus) {
        if (menu->inherits("Terminal::ViewMenu")) {
            menu->actions().at(between(1, 3))->trigger();
        }
    }
}

void RandomUser::placeOrder()
{
    press(between(0, 1) == 0 ? "F1" : "F2");
    for (int tick = between(0, 30); tick > 0; --tick) {
        press(between(0, 2) == 0 ? "Up" : "Down");
    }
    if (auto *const quantity = m_window->findChild<QSpinBox *>(QStringLiteral("orderQuantity"))) {
        quantity->setValue(100 * between(1, 20));
        quantity->setFocus();
    }
    const auto *const send = m_window->findChild<QPushButton *>(QStringLiteral("sendOrder"));
    m_orders += send != nullptr && send->isEnabled() ? 1 : 0;
    press("Return");
}

void RandomUser::cancelOrder()
{
    auto *const list = m_window->findChild<QTableView *>(QStringLiteral("ordersView"));
    if (list == nullptr || !list->isVisible()) {
        press("F3");
        return;
    }
    if (list->model()->rowCount() == 0) {
        return;
    }
    list->setFocus();
    list->selectRow(between(0, std::min(10, list->model()->rowCount()) - 1));
    ++m_cancellations;
    press("Del");
}

/// For one act: whoever pauses for good is helped when the practice begins again.
void RandomUser::pausePractice()
{
    QAction *const play = actionWith(m_window, Qt::Key_Space);
    if (m_isPractice && play != nullptr && play->isEnabled()) {
        play->trigger();
        QTimer::singleShot(500ms, play, &QAction::trigger);
    }
}

/// By which Qt makes the user.
class RandomUserPlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "RandomUser.json")

public:
    QObject *create(const QString &, const QString &words) override { return new RandomUser(words); }
};

} // namespace Terminal

#include "RandomUser.moc"
