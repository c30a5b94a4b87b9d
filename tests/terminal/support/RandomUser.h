#pragma once

#include <QFile>
#include <QObject>
#include <QTimer>

#include <random>

class QMainWindow;
class QMessageBox;
class QWidget;

namespace Terminal {

/// A user who does at random, from a seed, what one does in the terminal's window: moves and zooms the chart,
/// changes security, period, theme and language, opens lists and dialogs, places orders and cancels them. It
/// sits in the built program itself, as one of Qt's generic plug-ins:
///
///     QT_PLUGIN_PATH=… QT_QPA_GENERIC_PLUGINS=randomuser:seed=7:journal=/tmp/user tradeterminal …
///
/// "pause" are the milliseconds between two acts, "begins-again" the seconds after which a practice is begun
/// anew; without it none is. Every few seconds it writes a line into the journal: the objects of Qt that came
/// since it began less those that went, the window's widgets, its own acts, and the orders that it wanted
/// sent or cancelled.
class RandomUser : public QObject
{
    Q_OBJECT

public:
    /// `words` is what stands behind the name of the plug-in.
    explicit RandomUser(const QString &words);

private:
    /// What a user does, and how often beside the others.
    struct Deed
    {
        int weight;
        void (RandomUser::*act)();
    };

    int between(int least, int most);
    void act();
    void answer(QWidget *asked);
    void answerBox(QMessageBox *box);
    void actIn(QMainWindow *window);
    void count();

    void turnTheChart();
    void turnTheWheel();
    void dragTheChart();
    void point();
    void switchPeriod();
    void switchOverlay();
    void switchSecurity();
    void switchView();
    void openList();
    void openDialog();
    void changeLooks();
    void placeOrder();
    void cancelOrder();
    void pausePractice();

    void press(const char *keys);
    void type(const QString &text);
    QWidget *chart() const;

    std::mt19937 m_random;
    QFile m_journal;
    QTimer m_nextAct;
    QTimer m_nextPractice;
    QTimer m_nextCount;
    QMainWindow *m_window = nullptr; ///< during an act
    bool m_isPractice = false;
    int m_acts = 0;
    int m_orders = 0;
    int m_cancellations = 0;
};

} // namespace Terminal
