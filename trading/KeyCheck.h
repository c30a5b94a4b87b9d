// Holds a value of a message against what the table of messages says of its key.
#pragma once

#include "trading/MessageTable.h"

#include <QJsonValue>

namespace Trading {

/// What is wrong with the value under a key.
enum class KeyFault {
    None,
    Missing,    ///< a key that must be there is not
    WrongType,  ///< another JSON type than the table says
    NotAllowed, ///< of the type, but not of the form
};

/// True when a value of the right type has the form.
bool allows(Form form, const QJsonValue &value);

/// True for what counts as left out: nothing, null, and an empty text where the key is not required.
bool isLeftOut(const MessageKey &key, const QJsonValue &value);

/// What is wrong with a value, undefined where the key is not there. Looks into no record.
KeyFault faultOf(const MessageKey &key, const QJsonValue &value);

} // namespace Trading
