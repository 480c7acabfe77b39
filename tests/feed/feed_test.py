#!/usr/bin/python3
"""The feed from the AWS tools' files to what the widget says, on a CloudWatch of the test's own.

    feed_test.py FEED WIDGETS [DESKTOP]
"""

import contextlib
import json
import os
import pathlib
import signal
import subprocess
import sys
import tempfile
import time

FEED, WIDGETS, *_ = sys.argv[1:]
SECRET, TOKEN = "made/up+secret", "made//up+token=="
SETTINGS = 'interval = 10\n[[watch]]\nprofile = "prod"\nregions = ["us-east-1", "eu-west-1"]\n'
CREDENTIALS = f"[prod]\naws_access_key_id = AKIDEXAMPLE\naws_secret_access_key = {SECRET}\naws_session_token = {TOKEN}\n"
ALARM = {"StateValue": "ALARM", "StateReason": "high", "StateTransitionedTimestamp": 1731772840.5}
REGIONS = {
    "us-east-1": {"MetricAlarms": [ALARM | {"AlarmName": name} for name in ('a "<&\n', "b", "TargetTracking-c")]},
    "eu-west-1": {"CompositeAlarms": [ALARM | {"AlarmName": "é" * 255}, ALARM | {"AlarmName": "--odd", "StateValue": "OK"}]},
    "eu-south-1": {},
}
OWN = {"AWS_ACCESS_KEY_ID": "AKIDEXAMPLE", "AWS_SECRET_ACCESS_KEY": SECRET, "AWS_SESSION_TOKEN": TOKEN}
OLD = {"Version": 1, "AccessKeyId": "a", "SecretAccessKey": "b", "Expiration": "2020-01-01T00:00:00Z"}
NOBODY = {"AWS_ENDPOINT_URL": "http://127.0.0.1:1"}
TWO = "Alarms firing\n3\n2 watched"

# What happens: the faults, the environment, the settings; then the status, what is complained of,
# and what the widget says, seconds later.
ROUNDS = [
    ("nobody has ever answered", {}, NOBODY, SETTINGS, 1, ["us-east-1: Could not", "before a target has"], None, 0),
    ("all is well", {}, OWN | {"AWS_ACCESS_KEY_ID": "AKIDOTHER"}, SETTINGS, 0, [], TWO + " · just now", 0),
    ("one region is refused", {"eu-west-1": "denied"}, {}, SETTINGS, 0, ["eu-west-1: AccessDenied"], TWO, 0),
    ("which makes it old", {"eu-west-1": "denied"}, {}, SETTINGS, 0, ["eu-west-1: AccessDenied"], "Last updated", 400),
    ("one is not enabled", {"eu-west-1": "unknown"}, {}, SETTINGS, 0, ["eu-west-1: not enabled"], TWO, 0),
    ("it is well again", {}, {}, SETTINGS, 0, [], TWO + " · just now", 0),
    ("nobody answers", {}, NOBODY, SETTINGS, 0, ["us-east-1: Could not", "eu-west-1: Could not"], "Last updated", 400),
    ("the keys expire", {"key": "expired"}, {}, SETTINGS, 0, ["expired; aws configure --profile prod"] * 2, "Paused", 0),
    ("all were known to", {}, {"AWS_SHARED_CREDENTIALS_FILE": "~/old"}, SETTINGS, 0, ["the keys have expired"] * 2, "Paused", 0),
    ("no profile", {}, {}, SETTINGS.replace("prod", "prd"), 1, ["prd · us-east-1: ", "prd · eu-west-1: "], None, 0),
    ("no region", {}, {}, SETTINGS.split("regions")[0], 2, ["'prod' has no region"], None, 0),
    ("wrong settings", {}, {}, SETTINGS.replace("profile", "profil"), 2, ["feed.toml:3: ", "mean profile"], None, 0),
    ("nothing is watched", {}, {}, "", 1, ["nothing is watched: "], "Not watching", 0),
    ("the environment's keys", {}, OWN | {"AWS_REGION": "us-east-1"}, "", 0, [], "2\n1 watched · just now", 0),
    ("the usual", {}, {"AWS_PROFILE": "prod", "AWS_REGION": "eu-west-1"}, "", 0, [], "1\n1 watched · just now", 0),
]


def until(true, what):
    end = time.monotonic() + 20
    while not true():
        assert time.monotonic() < end, f"waited in vain for {what}"
        time.sleep(0.05)


class Home:
    def __init__(self, folder):
        self.folder, self.state = folder, folder / "state.json"
        self.settings = self.write(".config/tessary-widgets/feed.toml", SETTINGS)
        self.alarms = folder / ".local/share/group-containers/com.tessary.desktop/widgets/alarms.json"
        self.pins = folder / ".local/state/tessary-widgets/pins.json"
        self.write(".aws/credentials", CREDENTIALS)
        self.write("old", "[prod]\ncredential_process = echo '" + json.dumps(OLD) + "'\n")
        self.said, self.environment = "", {"HOME": str(folder), "PATH": os.environ["PATH"], "LC_ALL": "C.UTF-8"}

    def write(self, name, text):
        file = self.folder / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.with_suffix(".new").write_text(text)
        return file.with_suffix(".new").rename(file)

    def meet(self, faults):
        key = {"secret": SECRET, "token": TOKEN, "fault": faults.get("key", "")}
        self.write("state.json", json.dumps({"keys": {"AKIDEXAMPLE": key}, "regions": REGIONS, "faults": faults}))

    @contextlib.contextmanager
    def cloud_watch(self):
        self.meet({})
        script = pathlib.Path(__file__).with_name("cloudwatch.py")
        words = ["/usr/bin/python3", script, self.state]
        with subprocess.Popen(words, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True) as cloud:
            self.environment["AWS_ENDPOINT_URL"] = "http://127.0.0.1:" + cloud.stdout.readline().strip()
            yield
            cloud.stdin.close()

    def call(self, *words, **more):
        run = subprocess.run(words, capture_output=True, text=True, timeout=60, env=self.environment | more)
        self.said += run.stdout + run.stderr
        return run.returncode, run.stdout, run.stderr

    def shown(self, later=0):
        """What the widget says of a file that has to be usable."""
        assert "alarms.json: usable" in self.call(WIDGETS, "check")[1]
        at = str(time.time() + later)
        return self.call(WIDGETS, "render", "alarms", "--format", "text", "--at", at)[1]


def test_rounds(home):
    for what, faults, environment, settings, status, complaints, shows, later in ROUNDS:
        home.meet(faults)
        home.settings.write_text(settings)
        environment = {name: value.replace("~", str(home.folder)) for name, value in environment.items()}
        found, output, said = home.call(FEED, "--once", **environment)
        assert (found, output) == (status, ""), f"{what}: {found}, {output}, {said}"
        lines = said.splitlines()
        assert all(each in said for each in complaints) and bool(lines) == bool(complaints), f"{what}: {said}"
        if shows:
            assert shows in home.shown(later), f"{what}: {home.shown(later)}"
        else:
            assert status or not home.alarms.exists(), what
        assert not said or all(line.startswith("tessary-widgets-feed: ") for line in lines), said


PINS = """[[alarm]]
profile = "prod"
region = "us-east-1"
name = "b"
[[metric]]
profile = "prod"
region = "us-east-1"
namespace = "AWS/RDS"
name = "CPUUtilization"
dimensions = { DBInstanceIdentifier = "orders-db" }
"""


def test_pins(home):
    start = time.time() // 300 * 300
    values = [[start - 300 * i, i + 0.5] for i in range(6, 0, -1)]
    cpu = {"Namespace": "AWS/RDS", "MetricName": "CPUUtilization", "Unit": "Percent", "Values": values}
    cpu["Dimensions"] = [{"Name": "DBInstanceIdentifier", "Value": "orders-db"}]
    REGIONS["us-east-1"]["Metrics"] = [cpu]
    home.settings.write_text(SETTINGS + PINS)
    for faults, alarm, metric in (
        ({}, "In alarm", "1.5%"),
        ({"us-east-1": "denied"}, "In alarm\nNo right to ask for cloudwatch:DescribeAlarms", "1.5%"),
        ({"key": "expired"}, "In alarm\nSign in to prod", "1.5%\nSign in to prod"),
        ({"us-east-1": "unknown"}, "In alarm\nus-east-1: not enabled", "1.5%"),
        ({}, "In alarm", "1.5%"),
    ):
        home.meet(faults)
        status, _, said = home.call(FEED, "--once")
        assert status == 0, said
        for widget, shows in ("alarm", alarm), ("metric", metric):
            text = home.call(WIDGETS, "render", widget, "--format", "text")[1]
            assert shows in text, f"{widget} with {faults}: {text} {said}"
    assert home.call(WIDGETS, "check")[1].count("usable") == 3
    home.settings.write_text(SETTINGS)
    home.call(FEED, "--once")
    assert "Not pinned" in home.call(WIDGETS, "render", "metric", "--format", "text")[1]


def test_dry_run_and_status(home):
    before = home.alarms.read_bytes()
    home.settings.write_text(SETTINGS)
    status, output, _ = home.call(FEED, "--dry-run")
    assert status == 0 and json.loads(output)["alarms"]["firing"] == 3 and home.alarms.read_bytes() == before
    home.call(FEED, "--once")
    home.meet({"us-east-1": "denied"})
    home.call(FEED, "--once")
    told = json.loads(home.call(FEED, "status", "--json")[1])
    assert [each["failures"] for each in told["targets"]] == [1, 0] and told["targets"][0]["lastSuccessMs"]
    first, second = home.call(FEED, "status")[1].splitlines()[:2]
    assert first.startswith("prod · us-east-1: AccessDenied") and second.startswith("prod · eu-west-1: 1 firing (")


NO_RIGHT = {"us-east-1": "denied", "eu-west-1": "denied"}
CPU = "AWS/RDS CPUUtilization DBInstanceIdentifier=orders-db"
TROUBLE = "prod · us-east-1: No right to ask for cloudwatch:DescribeAlarms"

# What is typed, one call after the other: the faults and the words; then the status and what is said.
CALLS = [
    ({}, ["watch", "prd"], 1, "did you mean prod?"),
    ({}, ["unwatch"], 1, "nothing is watched that"),
    ({}, ["watch"], 0, "prod · us-east-1: 2 of 2 alarms firing\nNext: "),
    ({}, ["watch", "prod", "eu-west-1"], 0, "prod · eu-west-1: 1 of 2 alarms firing\n"),
    ({"us-east-1": "denied"}, ["alarms", "OD"], 0, "OK                 prod · eu-west-1: --odd\n" + "tessary-widgets-feed: " + TROUBLE),
    (NO_RIGHT, ["alarms"], 1, TROUBLE),
    (NO_RIGHT, ["watch", "prod"], 1, TROUBLE),
    ({"key": "expired"}, ["watch", "prod"], 0, "aws configure --profile prod"),
    ({}, ["metrics", "AWS/RDS"], 0, "prod · us-east-1: " + CPU + "\n"),
    ({}, ["pin", "alarm", "od"], 1, "no alarm 'od' is known in prod · us-east-1, prod · eu-west-1"),
    ({}, ["pin", "alarm", "--id", "odd", "--", "--odd"], 0, "prod · eu-west-1: --odd is pinned\n"),
    ({}, ["pin", "alarm", "b", "--id", "odd"], 1, "the id 'odd' is another pin's"),
    ({}, ["pin", "alarm", 'a "<&\n', "--region", "us-east-1"], 0, "--pin 'prod/us-east-1/a \"<&␊'\n"),
    ({}, ["pin", "metric", "AWS/RDS", "CPUUtilization"], 1, f"did you mean {CPU}?"),
    ({}, ["pin", "metric", *CPU.split(), "--statistic", "p99"], 0, CPU + " is pinned\n"),
    ({}, ["pin", "metric", "AWS/RDS", "Old"], 0, "AWS/RDS Old is pinned\n"),
    (NO_RIGHT, ["pin", "alarm", "x", "--region", "us-east-1"], 0, "prod · us-east-1: x is pinned\n"),
    (NO_RIGHT, ["pin", "alarm", "y"], 1, TROUBLE),
    ({}, ["status"], 0, "x: No right to ask for cloudwatch:DescribeAlarms (never answered)\n"),
    ({}, ["--once"], 0, ""),
    ({}, ["status"], 0, "alarm odd: OK (answered "),
    ({}, ["status"], 0, "\n  type: tessary-widgets-feed unpin prod/us-east-1/x\n"),
    ({}, ["unpin", "prod/us-east-1/x"], 0, "not pinned any more"),
    ({}, ["unpin", "prod/us-east-1/x"], 1, "nothing is pinned as 'prod/us-east-1/x'"),
    ({}, ["unwatch", "prod", "eu-west-1"], 0, "prod · eu-west-1 is not watched any more\n"),
    ({}, ["unwatch", "prod", "eu-west-1"], 1, "prod · eu-west-1 is not watched"),
    ({}, ["watch", "prod", "US"], 2, "'US' is no region"),
    ({}, ["alarms", "a", "b"], 2, "'b' is one word too many"),
    ({}, ["pin", "alarm", "b", "--period", "60"], 2, "--period is for metrics"),
    ({}, ["pin", "metric", "n", "m", "--period", "7"], 2, "'7' is not 1, 5"),
    ({}, ["pin", "metric", "n", "m", "d"], 2, "'d' is not DIMENSION=VALUE"),
    ({}, ["unpin"], 2, "expected the pin's id"),
]


def test_commands(home):
    home.settings.unlink()
    REGIONS["us-east-1"]["Metrics"].append({"Namespace": "AWS/RDS", "MetricName": "Old", "Dimensions": [], "Unit": "Percent", "Values": [], "Old": True})
    for faults, words, status, says in CALLS:
        home.meet(faults)
        found, output, complaints = home.call(FEED, *words, AWS_REGION="us-east-1")
        assert found == status and says in output + complaints, f"{words}: {found}, {output}{complaints}"
    listed = json.loads(home.call(FEED, "alarms", "b", "--json")[1])
    place = {"profile": "prod", "region": "us-east-1"}
    alarm = place | {"name": "b", "state": "ALARM", "id": "prod/us-east-1/b", "pinned": False}
    assert listed == {"alarms": [alarm], "faults": [], "more": False}, listed
    listed = json.loads(home.call(FEED, "metrics", "--json")[1])
    metric = place | {"namespace": "AWS/RDS", "name": "CPUUtilization", "dimensions": {"DBInstanceIdentifier": "orders-db"}}
    metric |= {"id": f"prod/us-east-1/AWS/RDS/CPUUtilization/p99/{CPU.split()[-1]}", "pinned": True}
    assert listed == {"metrics": [metric], "faults": [], "more": False}, listed
    pins = json.loads(home.call(FEED, "pin", "alarm", "b", "--label", "B", "--json")[1])
    assert pins == {"pins": [place | {"id": "prod/us-east-1/b", "label": "B"}], "faults": []}, pins
    assert "1.5%" in home.call(WIDGETS, "render", "metric", "--format", "text")[1]
    assert home.call(WIDGETS, "check")[1].count("usable") == 3


def test_pins_at_once(home):
    """Without a feed each makes its round, or relies on the one that does, which here takes long."""
    home.meet({"eu-south-1": "slow"})
    home.write(home.settings, SETTINGS.replace("eu-west-1", "eu-south-1"))
    words = [[FEED, "pin", "alarm", "b", "--region", "us-east-1", "--id", f"b{number}"] for number in range(6)]
    runs = [subprocess.Popen(each, env=home.environment, stdout=subprocess.DEVNULL) for each in words]
    assert [run.wait(60) for run in runs] == [0] * 6
    for file in home.pins, home.alarms.with_name("alarm-pins.json"):
        assert all(f'"b{number}"' in file.read_text() for number in range(6)), file.read_text()


def test_service(home):
    home.meet({})
    home.settings.unlink()
    systemctl = home.write("bin/systemctl", '#!/bin/sh\n[ "$2" = enable ] || echo LANG=C AWS_REGION=r | tr " " "\\n"\n')
    systemctl.chmod(0o700)
    folders = str(systemctl.parent) + ":" + os.environ["PATH"]
    status, said, _ = home.call(FEED, "watch", "--enable", **OWN, AWS_REGION="r", PATH=folders)
    unseen = "AWS_ACCESS_KEY_ID, AWS_ENDPOINT_URL, AWS_SECRET_ACCESS_KEY, AWS_SESSION_TOKEN"
    assert status == 0 and "The service runs" in said and f"this shell has: {unseen}\n" in said, said
    status, _, said = home.call(FEED, "watch", "--enable", PATH="/nowhere")
    assert status == 1 and "the service cannot be started" in said and "tessary-widgets-feed &" in said, said


def test_settings_and_additions(home):
    home.write(home.settings, SETTINGS + PINS.replace('name = "b"', 'name = "b"\nid = "b0"'))
    for words, says in (["unwatch", "prod", "eu-west-1"], "feed.toml: take"), (["unpin", "b0"], "not pinned"), (["unpin", "b0"], "feed.toml: take"):
        found, output, complaints = home.call(FEED, *words)
        assert says in output + complaints, f"{words}: {output}{complaints}"
    home.pins.write_text("{")
    for words in ["--once"], ["pin", "alarm", "b"], ["unwatch"]:
        status, _, said = home.call(FEED, *words)
        assert status == 2 and "pins.json: " in said and home.pins.read_text() == "{", said
    home.pins.unlink()
    home.settings.write_text(SETTINGS)


def test_running(home):
    """Settings that change, a second feed, and an end in the middle of a round."""
    home.meet({})
    home.alarms.unlink()
    errors = home.folder / "errors"
    with errors.open("w") as log:
        feed = home.feed = subprocess.Popen([FEED], stderr=log, env=home.environment)
    until(home.alarms.exists, "the first round")
    status, _, said = home.call(FEED, "--once")
    assert status == 1 and "another feed writes to" in said, said
    assert home.call(FEED, "pin", "alarm", "b")[0] == 0
    until(lambda: '"b"' in home.alarms.with_name("alarm-pins.json").read_text(), "the pin's round")
    home.write(home.settings, "intervall = 1\n")
    until(lambda: "did you mean interval?" in errors.read_text(), "a complaint of the settings")
    home.meet({"us-east-1": "denied"})
    for regions in "eu-south-1", "eu-west-1":
        home.write(home.settings, SETTINGS.replace("eu-west-1", regions))
        until(lambda: f'"{regions}"' in home.alarms.read_text(), "the new region's round")
    home.meet({"us-east-1": "hang", "eu-south-1": "hang"})
    home.write(home.settings, SETTINGS.replace("eu-west-1", "eu-south-1"))
    time.sleep(1)
    start = time.monotonic()
    feed.send_signal(signal.SIGTERM)
    assert feed.wait(20) == 0 and time.monotonic() - start < 2
    lines = errors.read_text().splitlines()
    assert len(lines) == 2 and "us-east-1: AccessDenied" in lines[1], lines


def main():
    for program in sys.argv[2:]:
        libraries = subprocess.check_output(["ldd", program], text=True)
        assert "libc.so" in libraries and "libcurl" not in libraries, libraries
    with tempfile.TemporaryDirectory() as folder:
        home = Home(pathlib.Path(folder))
        with home.cloud_watch():
            test_rounds(home)
            test_pins(home)
            test_dry_run_and_status(home)
            test_commands(home)
            test_pins_at_once(home)
            test_service(home)
            test_settings_and_additions(home)
            try:
                test_running(home)
            finally:
                home.feed.kill()
        kept = [file for file in home.folder.rglob("*") if file.is_file() and ".aws" not in file.parts]
        texts = [file.read_text() for file in kept if file != home.state] + [home.said]
        assert len(texts) > 3 and not any(each in text for text in texts for each in (SECRET, TOKEN))
        files = home.alarms, home.pins, home.folder / ".local/state/tessary-widgets/feed.json"
        assert all(file.stat().st_mode & 0o777 == 0o600 for file in files)


main()
