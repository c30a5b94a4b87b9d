#include "terminal/ui/BusState.h"

#include <QCoreApplication>

namespace Terminal {

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("BusState", source);
}

} // namespace

BusState busStateOf(const ModuleWatch &watch)
{
    switch (watch.bus()) {
    case ModuleWatch::Bus::Joining:
        return {BusState::Joining};
    case ModuleWatch::Bus::Joined:
        return {BusState::Joined};
    case ModuleWatch::Bus::Lost:
        return {BusState::Lost,
                text("Orders cannot be sent, and nothing that changes is heard, until it is back.")};
    }
    return {};
}

QString busStateText(const BusState &bus)
{
    switch (bus.kind) {
    case BusState::Unasked:
        return {};
    case BusState::Joining:
        return text("Bus: joining");
    case BusState::Joined:
        return text("Bus: joined");
    case BusState::Lost:
        return text("Bus: gone, joining again");
    case BusState::Failed:
        return text("Bus: does not run");
    }
    return {};
}

} // namespace Terminal
