// Stands in for libgweather: its world has cities, but looking for the nearest never ends, as on a disk that does not
// answer. The file that STUCK_MARK names is made once somebody is inside.

#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

#define EXPORTED __attribute__((visibility("default")))

extern "C" {

EXPORTED void *gweather_location_get_world()
{
    // Nobody gets as far as giving it back.
    static int world = 0;
    return &world;
}

EXPORTED void *gweather_location_find_nearest_city(void *, double, double)
{
    close(open(getenv("STUCK_MARK"), O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
    for (;;)
        pause();
}

EXPORTED void gweather_location_has_coords()
{
}
EXPORTED void gweather_location_get_coords()
{
}
EXPORTED void gweather_location_get_parent()
{
}
EXPORTED void gweather_location_get_level()
{
}
EXPORTED void gweather_location_get_name()
{
}
EXPORTED void gweather_location_get_city_name()
{
}
EXPORTED void gweather_location_get_country_name()
{
}
EXPORTED void gweather_location_get_timezone_str()
{
}
}
