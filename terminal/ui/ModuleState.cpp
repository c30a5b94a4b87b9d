#include "terminal/ui/ModuleState.h"

#include "terminal/services/BusInstance.h"
#include "terminal/services/ModuleWatch.h"

#include <QCoreApplication>

namespace Terminal {

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("ModuleState", source);
}

const QString secondsForm = QStringLiteral("HH:mm:ss");

/// What the module says of itself.
QString introduction(const ModuleWatch &watch)
{
    const auto presence = watch.presence();
    return presence ? introductionOf(*presence, QCoreApplication::applicationVersion())
                    : text("It does not say which ledger it serves");
}

ModuleState lateState(const ModuleWatch &watch, ModuleState::Kind kind)
{
    const QTime since = watch.unansweredSince().value_or(QTime());
    const QString late = text("No answer since %1").arg(since.toString(secondsForm));
    return {kind, late + QLatin1Char('\n') + introduction(watch), since};
}

/// What one that answers, now or until a moment ago, is to a window.
ModuleState presentState(const ModuleWatch &watch, ModuleState::Kind kind, const QString &ledger)
{
    const auto presence = watch.presence();
    if (watch.unansweredSince()) {
        return lateState(watch, ModuleState::Late);
    }
    if (presence && servesAnother(*presence, ledger)) {
        return {ModuleState::Foreign,
                text("This window's ledger: %1").arg(ledger) + QLatin1Char('\n') + introduction(watch)};
    }
    const bool isOther = presence && isOfAnotherVersion(*presence, QCoreApplication::applicationVersion());
    return {isOther && kind == ModuleState::Answering ? ModuleState::OtherVersion : kind,
            introduction(watch)};
}

} // namespace

bool ModuleState::isTrouble() const
{
    switch (kind) {
    case Unasked:
    case Awaited:
    case Starting:
    case Answering:
    case OtherVersion:
        return false;
    case NoBus:
    case Absent:
    case ReadOnly:
    case Foreign:
    case Late:
    case Refusing:
    case Silent:
    case Failed:
        return true;
    }
    return true;
}

ModuleState moduleStateOf(const ModuleWatch &watch, const QString &ledger)
{
    switch (watch.state()) {
    case ModuleWatch::State::Absent:
        return {watch.bus() == ModuleWatch::Bus::Joined ? ModuleState::Absent : ModuleState::NoBus};
    case ModuleWatch::State::Answering:
        return presentState(watch, ModuleState::Answering, ledger);
    case ModuleWatch::State::ReadOnly:
        return presentState(watch, ModuleState::ReadOnly, ledger);
    case ModuleWatch::State::Refusing:
        return {ModuleState::Refusing, watch.reason()};
    case ModuleWatch::State::Silent:
        return lateState(watch, ModuleState::Silent);
    }
    return {};
}

bool isOfAnotherVersion(const Trading::TradePresence &presence, const QString &ownVersion)
{
    return !presence.version.isEmpty() && presence.version != ownVersion;
}

QString introductionOf(const Trading::TradePresence &presence, const QString &ownVersion)
{
    const QString introduction =
        text("Version %1 on %2, ledger: %3").arg(presence.version, presence.host, presence.ledger);
    return !isOfAnotherVersion(presence, ownVersion)
               ? introduction
               : introduction + QLatin1Char('\n') +
                     text("This terminal has version %1; both should be of one version").arg(ownVersion);
}

QString moduleStateText(const ModuleState &module)
{
    switch (module.kind) {
    case ModuleState::Unasked:
        return text("Trading module: not asked");
    case ModuleState::Awaited:
        return text("Trading module: waiting for it");
    case ModuleState::Starting:
        return text("Trading module: starting");
    case ModuleState::NoBus:
        return text("Trading module: no bus");
    case ModuleState::Absent:
        return text("Trading module: none answers");
    case ModuleState::Answering:
        return text("Trading module: answers");
    case ModuleState::OtherVersion:
        return text("Trading module: answers, of another version");
    case ModuleState::ReadOnly:
        return text("Trading module: answers, takes no orders");
    case ModuleState::Foreign:
        return text("Trading module: of another ledger");
    case ModuleState::Late:
        return text("Trading module: no answer since %1").arg(module.since.toString(secondsForm));
    case ModuleState::Refusing:
        return text("Trading module: refuses");
    case ModuleState::Silent:
        return text("Trading module: does not answer any more");
    case ModuleState::Failed:
        return text("Trading module: does not run");
    }
    return {};
}

QString hindranceText(const ModuleState &module)
{
    switch (module.kind) {
    case ModuleState::Awaited:
    case ModuleState::Starting:
        return text("waits for the trading module");
    case ModuleState::NoBus:
        return text("no bus");
    case ModuleState::Absent:
        return text("no trading module");
    case ModuleState::Failed:
        return text("the trading module does not run");
    case ModuleState::Unasked:
    case ModuleState::Answering:
    case ModuleState::OtherVersion:
    case ModuleState::ReadOnly:
    case ModuleState::Foreign:
    case ModuleState::Late:
    case ModuleState::Refusing:
    case ModuleState::Silent:
        return {};
    }
    return {};
}

} // namespace Terminal
