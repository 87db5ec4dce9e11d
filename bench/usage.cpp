// Runs a program and tells what it used, as the last line of standard error: microseconds of user and system time, and
// the largest memory in kilobytes.
//
// usage PROGRAM [ARGUMENT...]
//
// The kernel counts the memory of the process that starts a program as the program's own until it has started. A
// script's interpreter is larger than most programs measured here; this starter is smaller than all of them.

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

extern char** environ;

namespace {

long long microseconds(const timeval& time) { return time.tv_sec * 1000000LL + time.tv_usec; }

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) return 2;
    pid_t process = 0;
    if (const int error = posix_spawn(&process, argv[1], nullptr, nullptr, argv + 1, environ); error != 0) {
        std::fprintf(stderr, "%s: %s\n", argv[1], std::strerror(error));
        return 3;
    }
    int status = 0;
    rusage used{};
    while (wait4(process, &status, 0, &used) < 0)
        if (errno != EINTR) return 3;
    std::fprintf(stderr, "%lld %ld\n", microseconds(used.ru_utime) + microseconds(used.ru_stime), used.ru_maxrss);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}
