"""The weather's web services, all on one local server."""

import json
import sys
import threading
from datetime import date, timedelta
from http.server import BaseHTTPRequestHandler, ThreadingHTTPServer
from urllib.parse import parse_qsl, urlsplit

MUNICH = {"city": "Munich", "region": "Bavaria", "country": "Germany", "latitude": 48.14, "longitude": 11.58}


class WeatherServer:
    """Answers as told until it is stopped; then nobody answers on its port until it is started again."""

    def __init__(self):
        self.temperature = 68.4
        self.weather_code = 2
        self.is_day = 1
        self.days = 4
        self.first_day = date(2025, 3, 4)
        self.caller = MUNICH
        self.failing = set()
        self.requests = []
        self._server = None
        self._port = 0
        self.start()

    @property
    def origin(self):
        return f"http://127.0.0.1:{self._port}"

    def start(self):
        handler = type("Handler", (_Handler,), {"weather": self})
        self._server = _Server(("127.0.0.1", self._port), handler)
        self._port = self._server.server_port
        threading.Thread(target=self._server.serve_forever, args=(0.02,), daemon=True).start()

    def stop(self):
        if self._server:
            self._server.shutdown()
            self._server.server_close()
            self._server = None

    close = stop

    def asked_for(self, path):
        """The query items of every request for a path, oldest first."""
        return [parse_qsl(urlsplit(target).query) for target in self.requests if urlsplit(target).path == path]

    def answer(self, target):
        """Status and body for a request."""
        path = urlsplit(target).path
        self.requests.append(target)
        if path in self.failing:
            return 500, {"error": True}
        answers = {"/": self._ipwho, "/json/": self._ipapi, "/v1/forecast": self._forecast}
        return (200, answers[path]()) if path in answers else (404, {})

    def _ipwho(self):
        return {"ip": "203.0.113.7", "success": True, **self.caller, "timezone": {"id": "Europe/Berlin"}}

    def _ipapi(self):
        place = dict(self.caller)
        country = place.pop("country")
        return {"ip": "203.0.113.7", **place, "country_name": country, "timezone": "Europe/Berlin"}

    def _forecast(self):
        days = range(self.days)
        return {
            "timezone": "Europe/Berlin",
            "current": {
                "time": f"{self.first_day}T13:00",
                "interval": 900,
                "temperature_2m": self.temperature,
                "relative_humidity_2m": 71,
                "apparent_temperature": self.temperature - 2,
                "is_day": self.is_day,
                "weather_code": self.weather_code,
                "wind_speed_10m": 9.2,
            },
            "daily": {
                "time": [str(self.first_day + timedelta(days=day)) for day in days],
                "weather_code": [[2, 61, 0, 71][day % 4] for day in days],
                "temperature_2m_max": [70.1 - 3 * day for day in days],
                "temperature_2m_min": [52.3 - 2 * day for day in days],
            },
        }


class _Server(ThreadingHTTPServer):
    daemon_threads = True

    def handle_error(self, request, client_address):
        # A request that was given up is nobody's error.
        if not isinstance(sys.exc_info()[1], ConnectionError):
            super().handle_error(request, client_address)


class _Handler(BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"

    def do_GET(self):
        status, answer = self.weather.answer(self.path)
        body = json.dumps(answer).encode()
        self.send_response(status)
        self.send_header("Content-Type", "application/json; charset=utf-8")
        self.send_header("Content-Length", str(len(body)))
        # A kept connection would outlive the server.
        self.send_header("Connection", "close")
        self.end_headers()
        self.wfile.write(body)

    def log_message(self, *_):
        pass
