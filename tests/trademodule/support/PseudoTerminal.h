#pragma once

#include <QFile>

#include <string>

#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace TradeModule {

/// A terminal that nobody sits at: what a program writes to it can be read again.
class PseudoTerminal
{
public:
    PseudoTerminal() : m_reader(posix_openpt(O_RDWR | O_NOCTTY))
    {
        grantpt(m_reader);
        unlockpt(m_reader);
        fcntl(m_reader, F_SETFL, O_NONBLOCK);
        // Some systems forget what was written once nobody has the terminal open.
        // NOLINTNEXTLINE(cppcoreguidelines-prefer-member-initializer)
        m_keepsOpen = open(ptsname(m_reader), O_RDWR | O_NOCTTY);
    }
    ~PseudoTerminal()
    {
        close(m_keepsOpen);
        close(m_reader);
    }
    PseudoTerminal(const PseudoTerminal &) = delete;
    PseudoTerminal &operator=(const PseudoTerminal &) = delete;

    QString name() const { return QFile::decodeName(ptsname(m_reader)); }

    /// What was written so far.
    std::string text() const
    {
        std::string text;
        char part[512];
        for (ssize_t size = 0; (size = read(m_reader, part, sizeof(part))) > 0;) {
            text.append(part, static_cast<std::size_t>(size));
        }
        return text;
    }

private:
    int m_reader;
    int m_keepsOpen = -1;
};

} // namespace TradeModule
