"""Writes the two stores of the command's tests the way another program would: with Python's plistlib."""

import datetime
import pathlib
import plistlib

STORE = {
    "lunabrookConfig": {"requiredHours": 8.0, "nightHour": 21},
    "watchTrackDict": {
        "rawSynchTime": datetime.datetime(2026, 6, 10, 5, 0, 0),  # UTC
        "rawSleepTime": 27000.0,
        "rawRingRating": "1.1|0.57|1.02",
        "rawRingValues": "5940|3420|52",
        "showStages": True,
    },
}

folder = pathlib.Path(__file__).parent
for name, form in (("binary", plistlib.FMT_BINARY), ("xml", plistlib.FMT_XML)):
    (folder / f"rings-{name}.plist").write_bytes(plistlib.dumps(STORE, fmt=form))
