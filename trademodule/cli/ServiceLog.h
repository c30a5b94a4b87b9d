#pragma once

#include <QString>
#include <QTimer>

namespace TradeModule {

/// The log of a serving module: standard error, or a file, in which each line begins with its time. What the
/// libraries of the process say on standard error goes the same way. One at a time per process.
///
/// Whoever rotates logs may move or remove the file at any time: within two seconds, and before the next line
/// of tell(), another one of its name is begun.
class ServiceLog
{
public:
    /// `file` is appended to; standard error when it is empty. An Error when it cannot be opened.
    explicit ServiceLog(const QString &file = {});
    /// Gives standard error back.
    ~ServiceLog();
    Q_DISABLE_COPY_MOVE(ServiceLog)

    void tell(const QString &text);

private:
    bool isFile() const { return !m_path.isEmpty(); }
    bool isMoved() const;
    bool open();
    void follow();

    const QByteArray m_path;
    int m_standardError = -1; ///< where it went before
    QTimer m_looking;
};

} // namespace TradeModule
