#include "terminal/ui/ModuleState.h"

#include <QCoreApplication>

namespace Terminal {

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("ModuleState", source);
}

} // namespace

QString moduleStateText(const ModuleState &module)
{
    switch (module.kind) {
    case ModuleState::Unasked:
        return text("Trading module: not asked");
    case ModuleState::Awaited:
        return text("Trading module: waiting for it");
    case ModuleState::Absent:
        return text("Trading module: none answers");
    case ModuleState::Answering:
        return text("Trading module: answers");
    case ModuleState::ReadOnly:
        return text("Trading module: answers, takes no orders");
    case ModuleState::Failed:
        return text("Trading module: does not run");
    }
    return {};
}

} // namespace Terminal
