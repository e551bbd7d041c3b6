"""The weather in the bar, from the web services to the pixels."""

import socket

import pytest

from harness.bar import Bar
from harness.logind import Logind
from harness.waiting import assert_holds, settled, wait_until
from harness.weather import WeatherServer

# Inside the pill, left of what it shows: the leading padding, the weather widget's own, and the place of its symbol.
PADDING = 16 + 5
SYMBOL_WIDTH = 24
TEXT_LEFT = PADDING + SYMBOL_WIDTH + 9
# More blank points than anywhere but before a day: a day's own gaps and the one beside the symbol are smaller.
DAY_GAP = 13
# What of the pill's ends shows the wallpaper beyond its round corners, in points.
CORNER = 12
INK = 90
# Text of the first order is nearly white, of the third rather grey.
PRIMARY = 180
OSLO = {"name": "Oslo", "country": "Norway", "latitude": 59.91, "longitude": 10.75, "timezone": "Europe/Oslo"}


@pytest.fixture
def server(desktop):
    return desktop.own(WeatherServer())


@pytest.fixture
def start_weather(desktop, server):
    def start(scale=1, widgets=("weather", "forecast"), environment=None, **settings):
        settings = {"enabledWidgets": widgets, "pinnedItemsIntroduced": True, "showAutoHideNudge": False, **settings}
        environment = {"MOORLINE_WEATHER_ORIGIN": server.origin, **(environment or {})}
        return Bar(desktop, settings, scale, **environment)

    return start


def pill_picture(bar):
    left, top, right, bottom = bar.pill_edges()
    return bar.screen.picture((left, top, right - left, bottom - top)).convert("L")


def inked_columns(picture, top=0.1, bottom=0.9, scale=1):
    """The columns of pixels with something bright in them, in a band of the pill."""
    width, height = picture.size
    band = picture.crop((0, int(height * top), width, int(height * bottom)))
    inside = range(CORNER * scale, width - CORNER * scale)
    return [x for x in inside if band.crop((x, 0, x + 1, band.height)).getextrema()[1] > INK]


def groups(columns, gap):
    """Runs of columns with less than `gap` blank ones between them."""
    runs = []
    for column in columns:
        if runs and column - runs[-1][1] <= gap:
            runs[-1][1] = column
        else:
            runs.append([column, column])
    return runs


def shown_days(bar):
    """How many columns of days stand to the right of the current weather."""
    return len(groups(inked_columns(pill_picture(bar), scale=bar.scale), DAY_GAP * bar.scale)) - 1


def wait_for_days(bar, count=3):
    wait_until(lambda: shown_days(bar) == count, what=f"{count} days are shown")
    return still(bar)


def brightest(picture, left, top, right, bottom):
    """Between two columns, and two heights as parts of the whole."""
    height = picture.height
    return picture.crop((left, int(height * top), right, int(height * bottom))).getextrema()[1]


def still(bar):
    settled(lambda: pill_picture(bar).tobytes())
    return pill_picture(bar)


def cut(picture, left, top, right, bottom):
    return picture.crop((left, top, right, bottom)).tobytes()


def located(bar, source, city):
    wait_until(
        lambda: any(f"location source={source} " in line and f" city={city} " in line for line in bar.log_lines()),
        what=f"the bar finds {city} by {source}",
    )


def test_temperature_place_and_three_days_are_shown(server, start_weather):
    bar = start_weather()
    picture = wait_for_days(bar)
    located(bar, "IP address", "Munich")
    height = picture.height
    ink = inked_columns(picture)
    assert any(PADDING <= x < PADDING + SYMBOL_WIDTH for x in ink), "a symbol"
    assert inked_columns(picture, 0.15, 0.5)[0] < TEXT_LEFT
    assert [x for x in inked_columns(picture, 0.2, 0.55) if x >= TEXT_LEFT], "a temperature"
    assert [x for x in inked_columns(picture, 0.6, 0.8) if x >= TEXT_LEFT], "a place"
    assert height == 72
    assert server.requests[0] == "/"
    assert dict(server.asked_for("/v1/forecast")[-1]) == {
        "latitude": "48.14",
        "longitude": "11.58",
        "current": "temperature_2m,relative_humidity_2m,apparent_temperature,is_day,weather_code,wind_speed_10m",
        "daily": "weather_code,temperature_2m_max,temperature_2m_min",
        "timezone": "auto",
        "forecast_days": "4",
        "temperature_unit": "fahrenheit",
        "wind_speed_unit": "mph",
    }


@pytest.mark.only_openbox
@pytest.mark.display(size=(2880, 1800))
def test_the_same_at_twice_the_pixels(start_weather):
    bar = start_weather(scale=2)
    picture = wait_for_days(bar)
    assert picture.height == 144
    left = TEXT_LEFT * 2
    days = groups(inked_columns(picture, scale=2), DAY_GAP * 2)[1][0]
    assert brightest(picture, left, 0.2, days, 0.55) > PRIMARY, "the temperature stands out"
    assert brightest(picture, left, 0.6, days, 0.8) < PRIMARY, "the place does not"
    assert brightest(picture, days, 0.1, picture.width - 24, 0.28) < PRIMARY, "nor do the days"
    for first, last in groups(inked_columns(picture, scale=2), DAY_GAP * 2)[1:]:
        middle = (first + last) // 2
        assert brightest(picture, first, 0.68, middle, 0.9) > PRIMARY, "the warmest of a day stands left"
        assert brightest(picture, middle + 4, 0.68, last + 1, 0.9) < PRIMARY, "the coldest right"


@pytest.mark.only_openbox
def test_another_temperature_changes_the_temperature_alone(desktop, server, start_weather):
    first = wait_for_days(start_weather())
    desktop.stop("bar")
    again = wait_for_days(start_weather())
    assert first.tobytes() == again.tobytes(), "the same weather looks the same"
    desktop.stop("bar")
    server.temperature = 41.2
    colder = wait_for_days(start_weather())
    assert first.size == colder.size
    middle = first.height * 55 // 100
    days = groups(inked_columns(first), DAY_GAP)[1][0]
    assert cut(first, TEXT_LEFT, 0, days, middle) != cut(colder, TEXT_LEFT, 0, days, middle), "the temperature"
    assert cut(first, 0, 0, TEXT_LEFT, first.height) == cut(colder, 0, 0, TEXT_LEFT, first.height), "the symbol"
    assert cut(first, TEXT_LEFT, middle, *first.size) == cut(colder, TEXT_LEFT, middle, *first.size), "the place"
    assert cut(first, days, 0, *first.size) == cut(colder, days, 0, *first.size), "the days"


def test_a_server_that_goes_away_takes_nothing_with_it(server, start_weather):
    bar = start_weather(location=OSLO, useCurrentLocation=False)
    before = wait_for_days(bar).tobytes()
    server.failing = {"/v1/forecast"}
    asked = len(server.asked_for("/v1/forecast"))
    bar.choose_mode(automatic=True)
    wait_until(lambda: len(server.asked_for("/v1/forecast")) > asked, what="the changed settings refresh the weather")
    server.stop()
    bar.choose_mode(automatic=False)
    bar.screen.move_pointer(10, 10)
    wait_until(lambda: not bar.popups(), what="the menu closes")
    assert_holds(lambda: pill_picture(bar).tobytes() == before, 1.5, "temperature, place and days stay")
    server.failing = set()
    server.temperature = 41.2
    server.start()
    bar.choose_mode(automatic=True)
    bar.screen.move_pointer(10, 10)
    wait_until(lambda: pill_picture(bar).tobytes() != before, what="the server is back and its weather is shown")
    assert shown_days(bar) == 3


@pytest.mark.only_openbox
def test_a_caller_who_is_not_found_any_more_keeps_the_weather(server, start_weather):
    bar = start_weather()
    before = wait_for_days(bar).tobytes()
    server.stop()
    bar.choose_mode(automatic=True)
    located(bar, "Chosen city", "San Francisco")
    bar.screen.move_pointer(10, 10)
    wait_until(lambda: not bar.popups(), what="the menu closes")
    assert_holds(lambda: pill_picture(bar).tobytes() == before, 1.0, "the weather and its place stay")


@pytest.mark.only_openbox
def test_without_a_server_the_weather_is_unavailable(server, start_weather):
    server.stop()
    bar = start_weather()
    located(bar, "Chosen city", "San Francisco")
    picture = still(bar)
    assert shown_days(bar) == 0
    assert not [x for x in inked_columns(picture) if x > TEXT_LEFT + 60], "only a short text"
    assert inked_columns(picture, 0.6, 0.8), "which says so"


@pytest.mark.only_openbox
def test_a_city_chosen_in_the_settings_is_the_one_that_is_shown(desktop, server, start_weather):
    munich = wait_for_days(start_weather())
    desktop.stop("bar")
    bar = start_weather(location=OSLO, useCurrentLocation=False, temperatureUnit="celsius")
    oslo = wait_for_days(bar)
    located(bar, "Chosen city", "Oslo")
    asked = dict(server.asked_for("/v1/forecast")[-1])
    assert (asked["latitude"], asked["longitude"]) == ("59.91", "10.75")
    assert (asked["temperature_unit"], asked["wind_speed_unit"]) == ("celsius", "kmh")
    assert munich.tobytes() != oslo.tobytes()
    assert server.requests.count("/") == 1, "nobody asks where the caller is"


@pytest.mark.only_openbox
def test_the_other_service_tells_where_the_caller_is(server, start_weather):
    server.failing = {"/"}
    server.caller = {**server.caller, "city": "Oslo"}
    bar = start_weather()
    wait_for_days(bar)
    located(bar, "IP address", "Oslo")
    assert server.requests[:2] == ["/", "/json/"]


@pytest.mark.only_openbox
def test_two_days_are_two_columns(server, start_weather):
    server.days = 2
    wait_for_days(start_weather(), 2)


@pytest.mark.only_openbox
def test_a_long_name_does_not_widen_the_bar_without_end(server, start_weather):
    server.caller = {**server.caller, "city": "Llanfairpwllgwyngyllgogerychwyrndrobwllllantysiliogogogoch"}
    bar = start_weather()
    assert wait_for_days(bar).width < 500


def test_the_pointer_brings_a_tooltip(start_weather):
    bar = start_weather()
    wait_for_days(bar)
    left, top, _, bottom = bar.pill_edges()
    bar.screen.move_pointer(left + 40, (top + bottom) // 2)
    popup = wait_until(lambda: next(iter(bar.popups()), None), what="the tooltip opens")
    frame = settled(lambda: bar.screen.frame(popup))
    assert 0 <= frame.x and frame.x + frame.width <= bar.screen.size[0]
    assert 0 <= frame.y and frame.y + frame.height <= bar.screen.size[1]
    bar.screen.move_pointer(10, 10)
    wait_until(lambda: not bar.popups(), what="the tooltip closes")


@pytest.mark.only_openbox
def test_a_system_bus_that_hangs_holds_nothing_up(desktop, start_weather):
    path = desktop.directory / "silent-bus"
    with socket.socket(socket.AF_UNIX) as bus:
        bus.bind(str(path))
        bus.listen()
        bar = start_weather(environment={"DBUS_SYSTEM_BUS_ADDRESS": f"unix:path={path}"})
        wait_for_days(bar)
        bus.settimeout(10)
        caller, _ = bus.accept()
        # The bar is told to wait now, and yet does what it is told.
        bar.choose_mode(automatic=True)
        wait_until(lambda: bar.settings()["visibilityMode"] == "auto", what="the bar takes a command")
        caller.close()


@pytest.mark.only_openbox
def test_a_machine_that_wakes_asks_for_the_weather(desktop, server, start_weather):
    logind = Logind(desktop)
    bar = start_weather()
    wait_for_days(bar)
    server.temperature = 41.2
    before = pill_picture(bar).tobytes()

    def is_shown_after_waking():
        # The bar begins to listen a little after its start.
        logind.sleep_and_wake()
        return pill_picture(bar).tobytes() != before

    wait_until(is_shown_after_waking, what="the weather of the new day is shown")
