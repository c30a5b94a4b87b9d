#pragma once

#include <QLoggingCategory>

namespace LocalCommunication {

Q_DECLARE_LOGGING_CATEGORY(lcBus)

} // namespace LocalCommunication
