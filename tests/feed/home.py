"""A person's home with made-up keys, and the CloudWatch of the test's own."""

import contextlib
import json
import os
import pathlib
import subprocess
import time

SECRET, TOKEN = "made/up+secret", "made//up+token=="
SETTINGS = 'interval = 10\n[[watch]]\nprofile = "prod"\nregions = ["us-east-1", "eu-west-1"]\n'
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
KEYS = {"aws_access_key_id": "AKIDEXAMPLE", "aws_secret_access_key": SECRET, "aws_session_token": TOKEN}
CREDENTIALS = "[prod]\n" + "".join(f"{name} = {value}\n" for name, value in KEYS.items())
START = time.time() // 300 * 300
ALARM = {"StateValue": "ALARM", "StateReason": "high", "StateTransitionedTimestamp": START - 7200}
CPU = {"Namespace": "AWS/RDS", "MetricName": "CPUUtilization", "Unit": "Percent"}
CPU["Dimensions"] = [{"Name": "DBInstanceIdentifier", "Value": "orders-db"}]
CPU["Values"] = [[START - 300 * i, i + 0.5] for i in range(6, 0, -1)]
REGIONS = {
    "us-east-1": {
        "MetricAlarms": [ALARM | {"AlarmName": name} for name in ('a "<&\n', "b", "TargetTracking-c")],
        "Metrics": [CPU],
    },
    "eu-west-1": {"CompositeAlarms": [ALARM | {"AlarmName": "é" * 255}, ALARM | {"AlarmName": "--odd", "StateValue": "OK"}]},
    "eu-south-1": {},
    "ap-south-1": {"MetricAlarms": [ALARM | {"AlarmName": f"a{i:04}"} for i in range(1000)]},
}
# Tells the keys once so many have come to ask.
TELL = """#!/bin/sh
echo >>$HOME/come
while [ $(wc -l <$HOME/come) -lt $1 ]; do sleep 0.02; done
cat $HOME/keys.json
"""
PRINTED = {"Version": 1, "AccessKeyId": "AKIDEXAMPLE", "SecretAccessKey": SECRET, "SessionToken": TOKEN}
# What it is given, and of the variables those that no browser may have.
BROWSER = """#!/bin/sh
{ echo "$*"; umask; env | grep -E "KEY|TOKEN|NOTIFY|WATCHDOG|_PROFILE" | sort; } >$HOME/opened
exit ${FAILS-0}
"""
WIDGETS = ".local/share/group-containers/com.tessary.desktop/widgets"


def until(holds, what, seconds=20):
    """Waits for something to be true, and returns it."""
    end = time.monotonic() + seconds
    while not (found := holds()):
        assert time.monotonic() < end, f"waited in vain for {what}"
        time.sleep(0.02)
    return found


class Home:
    def __init__(self, folder):
        os.umask(0o022)
        self.folder, self.state, self.said = folder, folder / "state.json", ""
        self.settings = self.write(".config/tessary-widgets/feed.toml", SETTINGS)
        self.pins = folder / ".local/state/tessary-widgets/pins.json"
        self.alarms, self.memory = folder / WIDGETS / "alarms.json", folder / ".local/state/tessary-widgets/feed.json"
        self.write(".aws/credentials", CREDENTIALS)
        self.write("keys.json", json.dumps(PRINTED))
        for name, script in ("tell", TELL), ("xdg-open", BROWSER):
            self.write("bin/" + name, script).chmod(0o700)
        path = f"{folder}/bin:" + os.environ["PATH"]
        self.environment = {"HOME": str(folder), "PATH": path, "LC_ALL": "C.UTF-8"}

    def write(self, name, text):
        file = self.folder / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.with_suffix(".new").write_text(text)
        return file.with_suffix(".new").rename(file)

    def takes(self, name):
        """The lines of a file that is gone then; none where it is not there."""
        file = self.folder / name
        lines = file.read_text().splitlines() if file.exists() else []
        file.unlink(missing_ok=True)
        return lines

    def meet(self, faults, **more):
        key = {"secret": SECRET, "token": TOKEN, "fault": faults.get("key", "")}
        state = {"keys": {"AKIDEXAMPLE": key}, "regions": REGIONS, "faults": faults}
        self.write("state.json", json.dumps(state | more))

    @contextlib.contextmanager
    def cloud_watch(self):
        self.meet({})
        script = pathlib.Path(__file__).with_name("cloudwatch.py")
        words = ["/usr/bin/python3", script, self.state, self.folder / "certificate.pem"]
        with subprocess.Popen(words, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True) as cloud:
            self.port, self.secure_port = cloud.stdout.readline().split()
            self.environment["AWS_ENDPOINT_URL"] = "http://127.0.0.1:" + self.port
            yield
            cloud.stdin.close()

    def call(self, *words, **more):
        run = subprocess.run(words, capture_output=True, text=True, timeout=60, env=self.environment | more)
        self.said += run.stdout + run.stderr
        return run.returncode, run.stdout, run.stderr

    def kept_no_secret(self):
        """In no file of its own, and in nothing that was said; and every file is the user's alone."""
        kept = [file for folder in (".local", ".config") for file in (self.folder / folder).rglob("*") if file.is_file()]
        texts = [file.read_text() for file in kept] + [self.said]
        assert len(texts) > 1 and not any(each in text for text in texts for each in (SECRET, TOKEN, "AKIDEXAMPLE"))
        assert all(file.stat().st_mode & 0o777 == 0o600 for file in kept if ".local" in file.parts), kept
