// Loaded into the bar by the dynamic linker: a library's call that never returns, as when a server is not there.
//
//   STUCK_CALL   "proxy" for the look-up of a proxy, "resolver" for that of a name
//   STUCK_MARK   the file that is made once somebody is inside that call

#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <netdb.h>
#include <unistd.h>

namespace {

bool isStuck(const char *call)
{
    const char *chosen = getenv("STUCK_CALL");
    return chosen && strcmp(chosen, call) == 0;
}

template <typename Function>
Function original(const char *name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

[[noreturn]] void stayForever()
{
    close(open(getenv("STUCK_MARK"), O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
    for (;;)
        pause();
}

} // namespace

extern "C" {

char **px_proxy_factory_get_proxies(void *factory, const char *address)
{
    if (isStuck("proxy"))
        stayForever();
    return original<decltype(&px_proxy_factory_get_proxies)>("px_proxy_factory_get_proxies")(factory, address);
}

int getaddrinfo(const char *node, const char *service, const addrinfo *hints, addrinfo **result)
{
    if (isStuck("resolver"))
        stayForever();
    return original<decltype(&getaddrinfo)>("getaddrinfo")(node, service, hints, result);
}
}
