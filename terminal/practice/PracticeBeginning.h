#pragma once

#include "terminal/practice/PracticeSessions.h"
#include "terminal/practice/PracticeWish.h"
#include "terminal/services/ChildProcess.h"

#include <QObject>

namespace Terminal {

/// Begins a practice: has the trading module make its ledger, and takes it into the list when it is whole.
/// What ends before, or with this object, leaves no session.
class PracticeBeginning : public QObject
{
    Q_OBJECT

public:
    PracticeBeginning(PracticeSessions sessions, PracticeWish wish, QObject *parent);
    ~PracticeBeginning() override;

    /// To be called once. `language` is that of the module's words, "zh" or "en".
    void start(const QString &moduleProgram, const QString &language);

Q_SIGNALS:
    void begun(const PracticeSession &session);
    void failed(const QString &problem);

private:
    void takeEnd();
    void fail(const QString &problem);

    const PracticeSessions m_sessions;
    const PracticeWish m_wish;
    QString m_room;
    ChildProcess m_module;
};

} // namespace Terminal
