// Loaded into the bar by the dynamic linker: writes down every turn of the main loop that took longer than it may.
//
//   STALL_WATCH_LOG       the file that a line is added to: seconds of the monotonic clock at which the turn began and
//                         ended, the milliseconds it took, and of those the ones on the processor
//   STALL_WATCH_LIMIT     milliseconds
//   STALL_WATCH_SERVERS   process ids of those the bar may have to wait for
//
// A turn is what lies between two waits of the main thread for all its events. The waits are cut into slices, so that a
// process which is kept from noticing its events counts too. A processor that others had meanwhile is not the bar's
// fault: neither while it was due itself, nor while a server was that it waited for, or another thread of its own: one
// that starts a program holds the memory of all. Nor is a disk that takes its time: what the bar saves has to be on it
// before it counts.

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <map>
#include <numeric>
#include <poll.h>
#include <string>
#include <sys/syscall.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr double nanosecondsPerMillisecond = 1e6;

double now(clockid_t clock)
{
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / nanosecondsPerMillisecond;
}

bool isMainThread()
{
    return syscall(SYS_gettid) == getpid();
}

/// How long a process or thread has been ready to run without a processor to run on, in milliseconds.
double delayFrom(int file)
{
    std::array<char, 80> text{};
    unsigned long long ran = 0;
    unsigned long long waited = 0;
    if (pread(file, text.data(), text.size() - 1, 0) > 0 && sscanf(text.data(), "%llu %llu", &ran, &waited) == 2)
        return static_cast<double>(waited) / nanosecondsPerMillisecond;
    return 0;
}

/// The delays of the main thread and the servers, all together, since the process began.
class Delays {
public:
    Delays()
    {
        add("/proc/self/task/" + std::to_string(getpid()) + "/schedstat");
        const char *servers = getenv("STALL_WATCH_SERVERS");
        char *rest = nullptr;
        for (char *text = strdup(servers ? servers : ""), *id = strtok_r(text, " ", &rest); id;
             id = strtok_r(nullptr, " ", &rest))
            add(std::string("/proc/") + id + "/schedstat");
    }

    [[nodiscard]] double sum() const
    {
        return std::accumulate(
            m_files.begin(), m_files.end(), 0.0, [](double sum, int file) { return sum + delayFrom(file); });
    }

private:
    void add(const std::string &path)
    {
        if (const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC); file >= 0)
            m_files.push_back(file);
    }

    std::vector<int> m_files;
};

/// The delay of each other thread, by its id.
using ThreadDelays = std::map<std::string, double>;

ThreadDelays threadDelays()
{
    ThreadDelays delays;
    DIR *folder = opendir("/proc/self/task");
    const std::string mainThread = std::to_string(getpid());
    while (const dirent *entry = folder ? readdir(folder) : nullptr) {
        const std::string id = entry->d_name;
        if (id.front() == '.' || id == mainThread)
            continue;
        const int file = open(("/proc/self/task/" + id + "/schedstat").c_str(), O_RDONLY | O_CLOEXEC);
        if (file < 0)
            continue;
        delays[id] = delayFrom(file);
        close(file);
    }
    if (folder)
        closedir(folder);
    return delays;
}

/// What the one thread was delayed since then that was delayed the most; a thread can be waited for only one at a time.
double longestSince(const ThreadDelays &before)
{
    double longest = 0;
    for (const auto &[id, delay] : threadDelays()) {
        const auto was = before.find(id);
        longest = std::max(longest, delay - (was == before.end() ? 0 : was->second));
    }
    return longest;
}

/// The main loop's turns and slices of waiting. Used by the main thread alone.
class Turns {
public:
    void begin()
    {
        m_began = now(CLOCK_MONOTONIC);
        m_processor = now(CLOCK_THREAD_CPUTIME_ID);
        m_delays = m_all.sum();
        m_threadDelays = threadDelays();
        m_disk = 0;
    }

    /// What the disk took of this turn.
    void addDisk(double milliseconds) { m_disk += milliseconds; }

    /// Ends what may have taken so many milliseconds more than the limit.
    void end(double allowance)
    {
        if (m_began == 0)
            return;
        const double ended = now(CLOCK_MONOTONIC);
        const double late = ended - m_began - allowance;
        if (late <= m_limit)
            return;
        const double processor = now(CLOCK_THREAD_CPUTIME_ID) - m_processor;
        const double excused = (m_all.sum() - m_delays) + longestSince(m_threadDelays) + m_disk;
        // While it was at work it waited for nobody.
        const double own = std::max(late - excused, processor);
        if (own > m_limit)
            write(ended, own, processor);
    }

private:
    void write(double ended, double own, double processor) const
    {
        const char *path = getenv("STALL_WATCH_LOG");
        FILE *log = path ? fopen(path, "ae") : nullptr;
        if (!log)
            return;
        fprintf(log, "%.3f %.3f %.0f %.0f\n", m_began / 1e3, ended / 1e3, own, processor);
        fclose(log);
    }

    const double m_limit = atof(getenv("STALL_WATCH_LIMIT") ? getenv("STALL_WATCH_LIMIT") : "100");
    const Delays m_all;
    double m_began = 0;
    double m_processor = 0;
    double m_delays = 0;
    ThreadDelays m_threadDelays;
    double m_disk = 0;
};

Turns &turns()
{
    static Turns all;
    return all;
}

/// Programs that the bar starts are not watched.
__attribute__((constructor)) void leaveChildrenAlone()
{
    unsetenv("LD_PRELOAD");
}

/// Whether a wait is the loop's own: one for several things at once, by the library that turns it. A wait for the one
/// answer of a server is part of a turn.
bool isLoop(nfds_t count, const void *caller)
{
    Dl_info from{};
    return count > 1 && isMainThread() && dladdr(caller, &from) != 0 && from.dli_fname
        && (strstr(from.dli_fname, "libglib-2.0") || strstr(from.dli_fname, "libQt6Core"));
}

/// Waits as `call` does for so many milliseconds; less than none is for ever.
template <typename Call>
int waitInSlices(double timeout, Call call)
{
    constexpr double longest = 50;
    turns().end(0);
    for (double left = timeout;; left -= longest) {
        const bool isLast = timeout >= 0 && left <= longest;
        const double slice = isLast ? left : longest;
        turns().begin();
        const int ready = call(slice);
        const int error = errno;
        turns().end(slice);
        if (ready != 0 || isLast) {
            turns().begin();
            errno = error;
            return ready;
        }
    }
}

/// Does what goes to the disk.
template <typename Call>
int goToDisk(Call call)
{
    if (!isMainThread())
        return call();
    const double began = now(CLOCK_MONOTONIC);
    const int answer = call();
    turns().addDisk(now(CLOCK_MONOTONIC) - began);
    return answer;
}

timespec timeOf(double milliseconds)
{
    const auto seconds = static_cast<time_t>(milliseconds / 1e3);
    const double rest = milliseconds - static_cast<double>(seconds) * 1e3;
    return {seconds, static_cast<long>(rest * nanosecondsPerMillisecond)};
}

} // namespace

extern "C" int poll(pollfd *files, nfds_t count, int timeout)
{
    static const auto real = reinterpret_cast<int (*)(pollfd *, nfds_t, int)>(dlsym(RTLD_NEXT, "poll"));
    if (!isLoop(count, __builtin_return_address(0)))
        return real(files, count, timeout);
    return waitInSlices(timeout, [&](double slice) { return real(files, count, static_cast<int>(slice)); });
}

extern "C" int ppoll(pollfd *files, nfds_t count, const timespec *timeout, const sigset_t *mask)
{
    static const auto real =
        reinterpret_cast<int (*)(pollfd *, nfds_t, const timespec *, const sigset_t *)>(dlsym(RTLD_NEXT, "ppoll"));
    if (!isLoop(count, __builtin_return_address(0)))
        return real(files, count, timeout, mask);
    const double milliseconds =
        timeout ? static_cast<double>(timeout->tv_sec) * 1e3 + static_cast<double>(timeout->tv_nsec) / 1e6 : -1;
    return waitInSlices(milliseconds, [&](double slice) {
        const timespec time = timeOf(slice);
        return real(files, count, &time, mask);
    });
}

extern "C" int fsync(int file)
{
    static const auto real = reinterpret_cast<int (*)(int)>(dlsym(RTLD_NEXT, "fsync"));
    return goToDisk([&] { return real(file); });
}

extern "C" int fdatasync(int file)
{
    static const auto real = reinterpret_cast<int (*)(int)>(dlsym(RTLD_NEXT, "fdatasync"));
    return goToDisk([&] { return real(file); });
}

extern "C" int rename(const char *from, const char *to) noexcept
{
    static const auto real = reinterpret_cast<int (*)(const char *, const char *)>(dlsym(RTLD_NEXT, "rename"));
    return goToDisk([&] { return real(from, to); });
}
