// docs/asyncapi.yaml: the channels of the bus with their messages, in a form that generators of code read.
#pragma once

#include <QByteArray>

/// The whole file. It is AsyncAPI 3 and names the files of schemas/.
QByteArray asyncApi();
