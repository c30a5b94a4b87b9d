#include "endpoint/Logging_p.h"

namespace LocalCommunication {

Q_LOGGING_CATEGORY(lcBus, "tradechart.bus")

} // namespace LocalCommunication
