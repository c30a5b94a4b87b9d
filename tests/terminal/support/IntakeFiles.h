#pragma once

#include "terminal/intake/Intake.h"
#include "tests/support/WaitUntil.h"
#include "tests/terminal/data/ManyForms.h"
#include "tests/terminal/support/DataFiles.h"

#include <QApplication>
#include <QDropEvent>
#include <QJsonArray>
#include <QJsonDocument>
#include <QMimeData>
#include <QProcess>
#include <QUrl>
#include <QWidget>

namespace Terminal {

/// Statements and bars that a user brings, and places of the test's own that they go to. The children are the
/// built programs.
class IntakeFiles : public DataFiles
{
protected:
    AccountPlaces places() const { return {folder() + QStringLiteral("/mine/data"), ledger()}; }
    QString ledger() const { return folder() + QStringLiteral("/mine/account.db"); }

    IntakePlan plan() const
    {
        IntakePlan plan;
        plan.terminalProgram = QStringLiteral(TRADETERMINAL);
        plan.moduleProgram = QStringLiteral(TRADEMODULE);
        plan.language = QStringLiteral("en");
        plan.places = places();
        return plan;
    }

    /// Buys and sells of 000001, whose bars someDays() are; `rows` of them, each with a deal number.
    QString statement(const QByteArray &more = {}, int rows = 3)
    {
        QByteArray text =
            "成交日期,成交时间,业务名称,证券代码,证券名称,成交价格,成交数量,成交金额,成交编号\n";
        for (int i = 0; i < rows; ++i) {
            text += "20240102,09:35:00,证券买入,000001,平安银行,10.00,100,1000.00," +
                    QByteArray::number(70000000 + i) + "\n";
        }
        return write(QStringLiteral("交割单.csv"), text + more);
    }

    QString barsWithCode()
    {
        return write(QStringLiteral("export.csv"),
                     FormOfDays("ts_code,trade_date,open,high,low,close,vol,amount",
                                "000001.SZ,{d},{o},{h},{l},{c},{lots},{thousands}")
                         .of(someDays()));
    }

    QString barsWithoutCode(const char *name = "000001.csv")
    {
        return write(QLatin1String(name),
                     FormOfDays("Date,Open,High,Low,Close,Volume,Amount", "{iso},{o},{h},{l},{c},{v},{yuan}")
                         .of(someDays()));
    }

    /// A day of minutes in the terminal's own form, in which the name alone tells security and day.
    QString ownMinutes()
    {
        return write(QStringLiteral("600519_20260327.csv"), "time,open,high,low,close,volume\n"
                                                            "930,1400,1400,1400,1400,29100\n"
                                                            "931,1400,1403.27,1396.66,1398.14,89700\n");
    }

    QString somethingElse() { return write(QStringLiteral("letter.txt"), "Dear Sir,\nhow are you?\n"); }

    /// What `trademodule` lists of the ledger with this command; nothing while there is no ledger.
    QJsonArray listed(const char *command) const
    {
        if (!QFileInfo::exists(ledger())) {
            return {};
        }
        QProcess module;
        module.start(QStringLiteral(TRADEMODULE),
                     {QStringLiteral("--ledger"), ledger(), QStringLiteral("--lang"), QStringLiteral("en"),
                      QLatin1String(command), QStringLiteral("--json")});
        EXPECT_TRUE(module.waitForFinished());
        const QByteArray said = module.readAllStandardError();
        if (said.contains("there is no ledger")) { // of a file that was being made when the module was ended
            return {};
        }
        EXPECT_EQ(module.exitCode(), 0) << said.toStdString();
        return QJsonDocument::fromJson(module.readAllStandardOutput()).array();
    }
};

/// Drops onto a place, as a desktop would. True when the place takes it.
inline bool drop(QWidget *place, const QMimeData &dropped)
{
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &dropped, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(place, &enter);
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &dropped, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(place, &drop);
    return enter.isAccepted() && drop.isAccepted();
}

/// Drops files, which come as text, too.
inline bool drop(QWidget *place, const QStringList &files)
{
    QMimeData dropped;
    QList<QUrl> urls;
    for (const QString &file : files) {
        urls.append(QUrl::fromLocalFile(file));
    }
    dropped.setUrls(urls);
    dropped.setText(files.join(QLatin1Char('\n')));
    return drop(place, dropped);
}

inline bool comesTo(const Intake &intake, Intake::Stage stage)
{
    return waitUntil([&] { return intake.stage() == stage; });
}

} // namespace Terminal
