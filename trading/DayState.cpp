#include "trading/DayState.h"

namespace Trading {

bool takesOrders(DayState state)
{
    switch (state) {
    case DayState::OpeningAuction:
    case DayState::BeforeMorning:
    case DayState::Morning:
    case DayState::Afternoon:
    case DayState::ClosingAuction:
        return true;
    case DayState::Closed:
    case DayState::BeforeOpen:
    case DayState::NoonBreak:
    case DayState::AfterClose:
    case DayState::AfterHours:
        return false;
    }
    return false;
}

} // namespace Trading
