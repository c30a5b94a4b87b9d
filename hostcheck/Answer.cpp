#include "hostcheck/Answer.h"

#include "hostcheck/EventTurns.h"
#include "hostcheck/Report.h"
#include "hostcheck/Watch.h"

namespace HostCheck {

namespace {

int &openAnswers()
{
    thread_local int open = 0;
    return open;
}

} // namespace

Answer::Answer(const Watch &watch) : m_watch(watch.shared_from_this()), m_turns(EventTurns::count())
{
    ++openAnswers();
    Report::ofProcess().countAnswer();
}

Answer::~Answer()
{
    --openAnswers();
    if (EventTurns::count() != m_turns) {
        m_watch->tell(Rule::EventsInsideAnswer);
    }
}

bool Answer::isOpen()
{
    return openAnswers() > 0;
}

} // namespace HostCheck
