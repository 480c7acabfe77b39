#!/usr/bin/python3
"""The feed from the AWS tools' files to what the widget says, on a CloudWatch of the test's own.

    feed_test.py FEED WIDGETS [DESKTOP]
"""

import json
import os
import pathlib
import signal
import subprocess
import sys
import tempfile
import time

sys.dont_write_bytecode = True
from home import CPU, KEYS, PINS, REGIONS, SETTINGS, START, Home, until  # noqa: E402

FEED, WIDGETS, *_ = sys.argv[1:]
OWN = {name.upper(): value for name, value in KEYS.items()}


def test_dry_run_and_status(home):
    home.settings.write_text(SETTINGS + PINS)
    status, output, _ = home.call(FEED, "--dry-run")
    assert status == 0 and json.loads(output)["alarms"]["firing"] == 3 and not home.alarms.exists()
    home.call(FEED, "--once")
    home.meet({"us-east-1": "denied"})
    home.call(FEED, "--once")
    told = json.loads(home.call(FEED, "status", "--json")[1])
    assert [each["failures"] for each in told["targets"]] == [1, 0] and told["targets"][0]["lastSuccessMs"]
    first, second = home.call(FEED, "status")[1].splitlines()[:2]
    assert first.startswith("prod · us-east-1: AccessDenied") and second.startswith("prod · eu-west-1: 1 firing (")


def test_aws_is_told_the_same(home):
    """The stand-in is held to the real command line, where that is installed."""
    if not pathlib.Path("/usr/bin/aws").exists():
        return print("there is no aws to ask")
    def aws(region, *words):
        common = "--region", region, "--profile", "prod", "--output", "json"
        quiet = {"AWS_EC2_METADATA_DISABLED": "true", "AWS_MAX_ATTEMPTS": "1", "AWS_PAGER": ""}
        home_url = "--endpoint-url", home.environment["AWS_ENDPOINT_URL"]
        status, output, said = home.call("/usr/bin/aws", "cloudwatch", *words, *common, *home_url, **quiet)
        return json.loads(output) if status == 0 else said
    home.meet({"eu-west-1": "denied"})
    for region in "us-east-1", "ap-south-1":
        told = aws(region, "describe-alarms", "--state-value", "ALARM")["MetricAlarms"]
        assert told and [each["AlarmName"] for each in told] == [each["AlarmName"] for each in REGIONS[region]["MetricAlarms"]]
    assert "(AccessDeniedException) when calling the DescribeAlarms" in aws("eu-west-1", "describe-alarms")
    shown = json.loads(home.alarms.with_name("metrics.json").read_text())["pins"][0]["points"]
    at = ["--start-time", str(START - 3000), "--end-time", str(START), "--period", "300", "--statistics", "Average"]
    metric = ["--namespace", CPU["Namespace"], "--metric-name", CPU["MetricName"], "--dimensions", json.dumps(CPU["Dimensions"])]
    told = aws("us-east-1", "get-metric-statistics", *at, *metric)["Datapoints"]
    assert sorted(each["Average"] for each in told) == sorted(each["v"] for each in shown)


NO_RIGHT = {"us-east-1": "denied", "eu-west-1": "denied"}
CPU_WORDS = "AWS/RDS CPUUtilization DBInstanceIdentifier=orders-db"
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
    ({}, ["metrics", "AWS/RDS"], 0, "prod · us-east-1: " + CPU_WORDS + "\n"),
    ({}, ["pin", "alarm", "od"], 1, "no alarm 'od' is known in prod · us-east-1, prod · eu-west-1"),
    ({}, ["pin", "alarm", "--id", "odd", "--", "--odd"], 0, "prod · eu-west-1: --odd is pinned\n"),
    ({}, ["pin", "alarm", "b", "--id", "odd"], 1, "the id 'odd' is another pin's"),
    ({}, ["pin", "alarm", 'a "<&\n', "--region", "us-east-1"], 0, "--pin 'prod/us-east-1/a \"<&␊'\n"),
    ({}, ["pin", "metric", "AWS/RDS", "CPUUtilization"], 1, f"did you mean {CPU_WORDS}?"),
    ({}, ["pin", "metric", *CPU_WORDS.split(), "--statistic", "p99"], 0, CPU_WORDS + " is pinned\n"),
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
    metric |= {"id": f"prod/us-east-1/AWS/RDS/CPUUtilization/p99/{CPU_WORDS.split()[-1]}", "pinned": True}
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
    home.settings.write_text(SETTINGS)
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
    home.said += errors.read_text()
    lines = errors.read_text().splitlines()
    assert len(lines) == 2 and "us-east-1: AccessDenied" in lines[1], lines


def main():
    for program in sys.argv[2:]:
        libraries = subprocess.check_output(["ldd", program], text=True)
        assert "libc.so" in libraries and "libcurl" not in libraries, libraries
    with tempfile.TemporaryDirectory() as folder:
        home = Home(pathlib.Path(folder))
        called = home.call("strace", "-e", "trace=prctl", FEED, "--version", ASAN_OPTIONS="detect_leaks=0")[2]
        assert "PR_SET_DUMPABLE, SUID_DUMP_DISABLE) = 0" in called, called
        with home.cloud_watch():
            test_dry_run_and_status(home)
            test_aws_is_told_the_same(home)
            test_commands(home)
            test_pins_at_once(home)
            test_service(home)
            test_settings_and_additions(home)
            try:
                test_running(home)
            finally:
                home.feed.kill()
        home.kept_no_secret()


main()
