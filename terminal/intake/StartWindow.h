#pragma once

#include "terminal/intake/IntakeDoor.h"
#include "terminal/options/TerminalOptions.h"

#include <QMainWindow>

#include <memory>
#include <optional>

class QHBoxLayout;
class QLabel;
class QProgressBar;
class QPushButton;

namespace Terminal {

/// The page of the first start: three ways in. The user's own statement and bars, dropped anywhere on it or
/// chosen; the example; and practice: a recorded day of the example, or one that was begun before.
class StartWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// What the page knows besides the options of this start.
    struct Facts
    {
        QString terminalProgram;
        QString sampleFolder; ///< empty: there is no sample, and the ways of it are closed
        QString notice;       ///< why the page comes and no chart; may be empty
        std::function<void(const QString &word)> setLanguage; ///< of all windows: zh or en
    };

    StartWindow(TerminalOptions options, Facts facts);
    ~StartWindow() override;

    IntakeDoor *door() { return m_door.get(); }

Q_SIGNALS:
    /// A chart can be shown with these options.
    void chosen(const TerminalOptions &options);

protected:
    void changeEvent(QEvent *event) override;

private:
    /// One way in.
    struct Way
    {
        QLabel *title;
        QLabel *text;
        QPushButton *go;
    };

    void setUp();
    Way addWay(QHBoxLayout *row);
    void showTexts();
    IntakePlan planFor(const AccountPlaces &places) const;
    void openOwn(const QStringList &codes);
    void openSample(bool practises);
    void fillSample(bool practises);
    void openPractice();
    void choose(const AccountPlaces &places, const TerminalOptions &options);

    TerminalOptions m_options;
    const Facts m_facts;
    QLabel *m_title;
    QLabel *m_notice;
    QProgressBar *m_progress;
    QPushButton *m_language;
    QPushButton *m_openOwn;
    Way m_own{};
    Way m_example{};
    Way m_replay{};
    std::unique_ptr<IntakeDoor> m_door;
    std::unique_ptr<Intake> m_sample; ///< while its ledger is being filled
};

} // namespace Terminal
