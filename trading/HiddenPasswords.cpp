#include "trading/HiddenPasswords.h"

#include <algorithm>
#include <cstring>

namespace Trading {

namespace {

void hidePassword(char *argument)
{
    char *const user = std::strstr(argument, "://");
    char *const end = user == nullptr ? nullptr : std::strrchr(user, '@');
    char *const password = end == nullptr ? nullptr : std::strchr(user + 3, ':');
    if (password != nullptr && password < end) {
        std::fill(password + 1, end, '*');
    }
}

} // namespace

void hidePasswords(int argc, char *argv[])
{
    std::for_each(argv, argv + argc, &hidePassword);
}

} // namespace Trading
