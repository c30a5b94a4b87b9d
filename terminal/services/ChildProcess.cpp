#include "terminal/services/ChildProcess.h"

#include <csignal>

#ifdef Q_OS_LINUX
#    include <sys/prctl.h>
#endif

namespace Terminal {

void ChildProcess::setupChildProcess()
{
#ifdef Q_OS_LINUX
    prctl(PR_SET_PDEATHSIG, SIGTERM);
#endif
}

} // namespace Terminal
