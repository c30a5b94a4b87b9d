#include "endpoint/Platform_p.h"

#include <gmock/gmock.h>

#include <QProcess>

#include <unistd.h>

namespace Platform = LocalCommunication::Platform;

namespace {

/// A program beside which a helper is forked that lives for as long as the pipe is open, as the one that ends
/// the broker with its terminal.
class ProgramWithHelper : public QProcess
{
public:
    ProgramWithHelper()
    {
        EXPECT_EQ(::pipe(m_pipe), 0);
        Platform::closeOnExec(m_pipe[0]);
        Platform::closeOnExec(m_pipe[1]);
    }
    ~ProgramWithHelper() override
    {
        ::close(m_pipe[0]);
        ::close(m_pipe[1]);
        kill();
        waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(ProgramWithHelper)

protected:
    void setupChildProcess() override
    {
        if (::fork() != 0) {
            return;
        }
        Platform::closeDescriptorsBut(m_pipe[0]);
        char end = 0;
        while (::read(m_pipe[0], &end, 1) > 0) {
        }
        ::_exit(EXIT_SUCCESS);
    }

private:
    int m_pipe[2] = {-1, -1};
};

} // namespace

TEST(Platform, LetsAProgramStartThoughAHelperLivesOnBesideIt)
{
    ProgramWithHelper program;
    program.start(QStringLiteral("sleep"), {QStringLiteral("100")});

    EXPECT_TRUE(program.waitForStarted(5000));
}

TEST(Platform, LetsTheEndOfAProgramBeSeenThoughAHelperLivesOnBesideIt)
{
    ProgramWithHelper program;
    program.start(QStringLiteral("true"), QStringList());

    EXPECT_TRUE(program.waitForFinished(5000));
}

TEST(Platform, KnowsACrowdByItsError)
{
    EXPECT_TRUE(Platform::isCrowded(EAGAIN));
    EXPECT_FALSE(Platform::isCrowded(ENOENT));
}
