#include "monkey/lastwords.h"

#include <algorithm>
#include <csignal>
#include <cstring>
#include <unistd.h>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/common_interface_defs.h>
#endif

namespace Monkey {

namespace {

constexpr unsigned secondsOfStep = 60;
constexpr std::size_t longest = 1000;
char words[longest];
volatile std::size_t length = 0;

void say()
{
    // Nothing can be done about an error here.
    if (length > 0 && write(STDERR_FILENO, words, length) < 0)
        return;
    length = 0;
}

#ifdef __SANITIZE_ADDRESS__
void onFinding()
{
    say();
}
#endif

void onSignal(int number)
{
    say();
    std::signal(number, SIG_DFL);
    std::raise(number == SIGALRM ? SIGABRT : number);
}

}

void LastWords::install()
{
#ifdef __SANITIZE_ADDRESS__
    __sanitizer_set_death_callback(onFinding);
    std::signal(SIGALRM, onSignal);
#else
    for (const int number : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGALRM})
        std::signal(number, onSignal);
#endif
}

void LastWords::set(const QByteArray& text)
{
    length = 0;
    const std::size_t size = std::min(longest, static_cast<std::size_t>(text.size()));
    std::memcpy(words, text.constData(), size);
    length = size;
    alarm(secondsOfStep);
}

void LastWords::clear()
{
    length = 0;
    alarm(0);
}

}
