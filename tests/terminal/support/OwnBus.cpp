// Gives the test program, and the children that it starts, a bus of their own: another one of the same
// program may run beside it.
#include <gtest/gtest.h>

#include <QCoreApplication>

namespace {

class OwnBus : public ::testing::Environment
{
public:
    void SetUp() override
    {
        qputenv("TRADEBUS_INSTANCE", "test-" + QByteArray::number(QCoreApplication::applicationPid()));
    }
};

[[maybe_unused]] const auto *const ownBus = ::testing::AddGlobalTestEnvironment(new OwnBus);

} // namespace
