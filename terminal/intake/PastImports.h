#pragma once

#include "terminal/intake/IntakePlan.h"
#include "terminal/intake/IntakeStyle.h"
#include "terminal/services/ChildProcess.h"

#include <QDialog>

class QLabel;
class QPushButton;
class QTableWidget;

namespace Terminal {

/// Lists what was imported into a ledger, and takes back one of it when the user says so.
class PastImports : public QDialog
{
    Q_OBJECT

public:
    PastImports(const IntakePlan &plan, const IntakeLook &look, QWidget *parent);
    ~PastImports() override;

    /// Stays while one is taken back: it would be told to nobody.
    void done(int result) override;

Q_SIGNALS:
    /// One was taken back: the ledger is another now.
    void written();

private:
    void run(const QStringList &command);
    void takeEnd(int exitCode);
    void showImports(const QByteArray &json);
    void askToUndo();
    void showButtons();
    QString cell(int row, int column) const;

    const IntakePlan m_plan;
    ChildProcess m_module;
    bool m_isUndoing = false;
    QTableWidget *m_table;
    QLabel *m_notice;
    QPushButton *m_undo;
};

} // namespace Terminal
