#!/usr/bin/python3
"""The feed from the AWS tools' files to what the widget says, on a CloudWatch of the test's own.

    feed_test.py FEED WIDGETS [DESKTOP]
"""

import json
import pathlib
import signal
import subprocess
import sys
import tempfile
import time

sys.dont_write_bytecode = True
from home import CPU, PINS, REGIONS, SETTINGS, START, Home, until  # noqa: E402

FEED, WIDGETS, *_ = sys.argv[1:]


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
            try:
                test_running(home)
            finally:
                home.feed.kill()
        home.kept_no_secret()


main()
