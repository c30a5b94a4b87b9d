#include "terminal/ui/ModuleState.h"

#include "terminal/services/ModuleWatch.h"

#include <QCoreApplication>

namespace Terminal {

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("ModuleState", source);
}

/// What the module says of itself; empty for one that says nothing.
QString introduction(const ModuleWatch &watch)
{
    const auto presence = watch.presence();
    return presence ? introductionOf(*presence, QCoreApplication::applicationVersion()) : QString();
}

} // namespace

ModuleState moduleStateOf(const ModuleWatch &watch)
{
    switch (watch.state()) {
    case ModuleWatch::State::Absent:
        return {watch.isOnBus() ? ModuleState::Absent : ModuleState::NoBus};
    case ModuleWatch::State::Answering:
        return {ModuleState::Answering, introduction(watch)};
    case ModuleWatch::State::ReadOnly:
        return {ModuleState::ReadOnly, introduction(watch)};
    case ModuleWatch::State::Refusing:
        return {ModuleState::Refusing, watch.reason()};
    case ModuleWatch::State::Silent:
        return {ModuleState::Silent, introduction(watch)};
    }
    return {};
}

QString introductionOf(const Trading::TradePresence &presence, const QString &ownVersion)
{
    const QString introduction =
        text("Version %1 on %2, ledger: %3").arg(presence.version, presence.host, presence.ledger);
    const bool isOfOurVersion = presence.version.isEmpty() || presence.version == ownVersion;
    return isOfOurVersion
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
    case ModuleState::NoBus:
        return text("Trading module: no bus");
    case ModuleState::Absent:
        return text("Trading module: none answers");
    case ModuleState::Answering:
        return text("Trading module: answers");
    case ModuleState::ReadOnly:
        return text("Trading module: answers, takes no orders");
    case ModuleState::Refusing:
        return text("Trading module: refuses");
    case ModuleState::Silent:
        return text("Trading module: does not answer any more");
    case ModuleState::Failed:
        return text("Trading module: does not run");
    }
    return {};
}

} // namespace Terminal
