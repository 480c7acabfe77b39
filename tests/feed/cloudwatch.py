#!/usr/bin/python3
# A CloudWatch on loopback, held to what botocore knows of the real one.
#
#     cloudwatch.py STATE [CERTIFICATE]    # prints its ports, http and https; ends with its input
#
# Each request's signature is computed anew, its parameters and the answer are checked against the
# service's model. The AWS command line asks in a form and is answered in XML, anybody else in JSON.
# STATE is a JSON file that is read for each request:
#
#     {"keys": {"AKIDEXAMPLE": {"secret": "s", "token": "t", "fault": "expired"}},
#      "regions": {"us-east-1": {"MetricAlarms": [], "CompositeAlarms": [], "Metrics": [
#          {"Namespace": "n", "MetricName": "m", "Dimensions": [], "Unit": "Percent", "Values": [[0, 1.5]], "Old": true},
#          {"Expression": "a / b", "Values": [[0, 1.5]]}]}},
#      "faults": {"us-east-1": "throttled", "eu-west-1": ["hang", ""]},
#      "page": 500, "skew": 0}
#
# A metric's values are those of every statistic; an old one was not told in the last three hours. A fault, of REFUSALS or FAULTS, is for ever; a list
# has one for each request from when it was first seen. "skew" is how many seconds the clock is ahead.
# CERTIFICATE is written: what to trust.
import contextlib
import datetime
import gzip
import json
import math
import os
import ssl
import struct
import subprocess
import sys
import threading
import time
from http.server import BaseHTTPRequestHandler, ThreadingHTTPServer
from socket import SO_LINGER, SOL_SOCKET
from urllib.parse import parse_qsl
from xml.sax.saxutils import escape

from botocore import auth, awsrequest, credentials, loaders, model, parsers, validate

REFUSALS = {
    "throttled": (400, "ThrottlingException", "Rate exceeded"),
    "denied": (400, "AccessDeniedException", "User: arn:aws:iam::123456789012:user/x is not authorized"),
    "expired": (400, "ExpiredTokenException", "The security token included in the request is expired"),
    "unknown": (400, "UnrecognizedClientException", "The security token included in the request is invalid"),
    "clock": (403, "SignatureDoesNotMatch", "Signature expired: 1 is now earlier than 2"),
    "signature": (403, "SignatureDoesNotMatch", "The request signature we calculated does not match"),
}
STATE, COUNTS, TURNS = sys.argv[1], {"connections": 0, "requests": 0}, {}

description = loaders.Loader().load_service_model("cloudwatch", "service-2")
prefix, FORM = "GraniteServiceVersion20100801", "application/x-www-form-urlencoded"
description["metadata"].update(protocol="json", jsonVersion="1.0", targetPrefix=prefix)
for kind in "MetricAlarm", "CompositeAlarm":
    description["shapes"][kind]["members"]["StateTransitionedTimestamp"] = {"shape": "Timestamp"}
SERVICE = model.ServiceModel(description)


# Arguments: the status, the type and the message.
class Refused(Exception):
    pass


# Knows enumerations and upper limits as well.
class Validator(validate.ParamValidator):
    def _validate(self, value, shape, errors, name):
        super()._validate(value, shape, errors, name)
        size = len(value) if hasattr(value, "__len__") else value
        if value not in (getattr(shape, "enum", None) or [value]) or (
            "max" in shape.metadata and size > shape.metadata["max"]
        ):
            errors.report(name, "invalid type", param=value, valid_types=[shape.name])


def check(value, shape):
    report = Validator().validate(value, shape).generate_report()
    if report:
        raise Refused(400, "ValidationError", report)


# As JSON can say it.
def spelt(value):
    if isinstance(value, dict):
        return {key: spelt(each) for key, each in value.items()}
    if isinstance(value, list):
        return [spelt(each) for each in value]
    return value if not isinstance(value, float) or math.isfinite(value) else str(value).replace("nan", "NaN")


TYPES = {
    "integer": int,
    "double": float,
    "boolean": "true".__eq__,
    "timestamp": lambda text: datetime.datetime.fromisoformat(text).timestamp(),
}


# A form's {("AlarmTypes", "member", "1"): "MetricAlarm"} as its shape says.
def unfold(shape, fields):
    if () in fields:
        return TYPES.get(shape.type_name, str)(fields[()])
    depth, parts = (2 if shape.type_name == "list" else 1), {}
    for path, text in fields.items():
        parts.setdefault(path[depth - 1], {})[path[depth:]] = text
    if shape.type_name == "list":
        return [unfold(shape.member, parts[number]) for number in sorted(parts, key=int)]
    return {name: unfold(shape.members[name], part) for name, part in parts.items()}


def fold(name, shape, value):
    if shape.type_name == "structure":
        text = "".join(fold(each, shape.members[each], value[each]) for each in value)
    elif shape.type_name == "list":
        text = "".join(fold("member", shape.member, each) for each in value)
    elif shape.type_name == "timestamp":
        text = datetime.datetime.fromtimestamp(value, datetime.timezone.utc).isoformat()
    else:
        text = escape(str(value), {"\n": "&#10;"})
    return f"<{name}>{text}</{name}>"


def page(found, asked, most):
    start = int(asked.get("NextToken", 0))
    rest = {"NextToken": str(start + most)} if len(found) > start + most else {}
    return found[start : start + most], rest


def describe_alarms(region, asked):
    kinds = "MetricAlarm", "CompositeAlarm"
    found = [
        (kind, alarm)
        for kind in kinds
        for alarm in region.get(kind + "s", [])
        if kind in asked.get("AlarmTypes", kinds[:1])
        and alarm["StateValue"] == asked.get("StateValue", alarm["StateValue"])
        and alarm["AlarmName"] in asked.get("AlarmNames", [alarm["AlarmName"]])
    ]
    found, rest = page(found, asked, asked.get("MaxRecords", 50))
    return {kind + "s": [alarm for own, alarm in found if own == kind] for kind in kinds} | rest


def metrics_of(region, asked):
    names = asked.keys() & {"Namespace", "MetricName", "Expression"}
    return [
        metric
        for metric in region.get("Metrics", [])
        if all(metric.get(name) == asked[name] for name in names)
        and all(each in metric.get("Dimensions", []) for each in asked.get("Dimensions", []))
    ]


def list_metrics(region, asked):
    names = "Namespace", "MetricName", "Dimensions"
    named = [each for each in metrics_of(region, asked) if "MetricName" in each]
    named = [each for each in named if not ("RecentlyActive" in asked and each.get("Old"))]
    found, rest = page(named, asked, region["page"])
    return {"Metrics": [{name: each[name] for name in names} for each in found]} | rest


# Time and value, the end exclusive.
def points_of(region, metric, asked):
    count = len(metric.get("Dimensions", []))
    exact = [each for each in metrics_of(region, metric) if len(each.get("Dimensions", [])) == count]
    return [point for each in exact for point in each["Values"] if asked["StartTime"] <= point[0] < asked["EndTime"]]


def get_metric_statistics(region, asked):
    if (asked["EndTime"] - asked["StartTime"]) / asked["Period"] > 1440:
        raise Refused(400, "InvalidParameterCombination", "more than 1,440 datapoints")
    unit = next((each["Unit"] for each in metrics_of(region, asked)), "None")
    points = [
        {"Timestamp": at, "Unit": unit}
        | {name: value for name in asked.get("Statistics", [])}
        | {"ExtendedStatistics": {name: value for name in asked.get("ExtendedStatistics", [])}}
        for at, value in points_of(region, asked, asked)
    ]
    return {"Label": asked["MetricName"], "Datapoints": points[1::2] + points[::2]}


def get_metric_data(region, asked):
    results, rest = [], {}
    for query in asked["MetricDataQueries"]:
        metric = query["MetricStat"]["Metric"] if "MetricStat" in query else query
        points, more = page(points_of(region, metric, asked), asked, region["page"])
        if query.get("ReturnData", True):
            told = {"Id": query["Id"], "StatusCode": "PartialData" if more else "Complete"}
            told |= {"Timestamps": [at for at, _ in points], "Values": [value for _, value in points]}
            results.append(told)
            rest |= more
    return {"MetricDataResults": results} | rest


OPERATIONS = {
    "DescribeAlarms": describe_alarms,
    "ListMetrics": list_metrics,
    "GetMetricStatistics": get_metric_statistics,
    "GetMetricData": get_metric_data,
}


def slow(http, body):
    http.reply(200, body, sent=0)
    for at in range(len(body)):
        http.wfile.write(body[at : at + 1])
        time.sleep(0.05)


def short(http, body):
    http.reply(200, body, sent=len(body) // 2)
    http.close_connection = True


def reset(http, _):
    http.connection.setsockopt(SOL_SOCKET, SO_LINGER, struct.pack("ii", 1, 0))
    os.close(http.connection.detach())
    http.close_connection = True


def echo(http, _):
    signed = http.headers["Authorization"]
    said = [http.headers["X-Amz-Security-Token"], signed.split("/")[0], signed.split("=")[-1]]
    http.refuse(403, "SignatureDoesNotMatch", "should have been " + " ".join(said))


def packed(http, body):
    http.reply(200, gzip.compress(body, 1), **{"Content-Encoding": "gzip"})


# What becomes of an answer.
FAULTS = {
    "": lambda http, body: http.reply(200, body),
    "hang": lambda http, _: http.rfile.read(1),
    "slow": slow,
    "half": lambda http, body: http.reply(200, body[: len(body) // 2]),
    "short": short,
    "html": lambda http, _: http.reply(500, b"<html><h1>Oops</h1></html>"),
    "reset": reset,
    "redirect": lambda http, _: http.reply(307, b"", Location=f"http://{http.headers['Host']}/"),
    "huge": lambda http, body: http.reply(200, body.ljust(17 << 20)),
    "bomb": lambda http, body: packed(http, body.ljust(17 << 20)),
    "deep": lambda http, _: http.reply(200, b'{"any":' + b"[" * 9999 + b"]" * 9999 + b"}"),
    "packed": packed,
    "echo": echo,
    "counts": lambda http, _: http.reply(200, json.dumps(COUNTS).encode()),
}


class CloudWatch(BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"
    disable_nagle_algorithm = True
    log_message = lambda *_: None

    def setup(self):
        COUNTS["connections"] += 1
        super().setup()

    def handle(self):
        with contextlib.suppress(ConnectionError):
            super().handle()

    def reply(self, status, body, sent=None, **headers):
        self.send_response(status)
        for name, value in {"Content-Type": "application/x-amz-json-1.0", "Content-Length": len(body), **headers}.items():
            self.send_header(name, value)
        self.end_headers()
        self.wfile.write(body[:sent])

    def refuse(self, status, kind, message):
        if not self.is_json():
            said = f"<Error><Code>{kind}</Code><Message>{escape(message)}</Message></Error>"
            return self.reply(status, f"<ErrorResponse>{said}</ErrorResponse>".encode())
        self.reply(status, json.dumps({"__type": "com.amazon.coral.service#" + kind, "message": message}).encode())

    def do_POST(self):
        body = self.rfile.read(int(self.headers["Content-Length"]))
        COUNTS["requests"] += 1
        try:
            self.answer(body)
        except Refused as refused:
            self.refuse(*refused.args)

    def answer(self, body):
        with open(STATE) as file:
            state = json.load(file)
        key, region = self.signer(state, body)
        fault = key.get("fault") or state.get("faults", {}).get(region, "")
        if isinstance(fault, list):
            turn = TURNS.setdefault(region, [fault, 0])
            if turn[0] != fault:
                turn[:] = fault, 0
            turn[1] += 1
            fault = (fault + [""] * turn[1])[turn[1] - 1]
        if fault in REFUSALS:
            raise Refused(*REFUSALS[fault])
        FAULTS[fault](self, self.ask(state.get("regions", {}).get(region, {}) | {"page": state.get("page", 500)}, body))

    # The keys that signed the request, and for which region.
    def signer(self, state, body):
        scope, signed, signature = (part.split("=")[1] for part in self.headers["Authorization"].split(","))
        name, _, region, service, _ = scope.split("/")
        key = state["keys"].get(name)
        if not key or key.get("token") != self.headers["X-Amz-Security-Token"]:
            raise Refused(*REFUSALS["unknown"])
        at = self.headers["X-Amz-Date"]
        now = time.time() + state.get("skew", 0)
        if abs(time.mktime(time.strptime(at, "%Y%m%dT%H%M%SZ")) - time.timezone - now) > 900:
            raise Refused(*REFUSALS["clock"])
        headers = {each: self.headers[each] for each in signed.split(";")}
        request = awsrequest.AWSRequest("POST", "http://" + self.headers["Host"], headers=headers, data=body)
        request.context["timestamp"] = at
        own = auth.SigV4Auth(credentials.Credentials(name, key["secret"]), service, region)
        mine = own.signature(own.string_to_sign(request, own.canonical_request(request)), request)
        must = {"host", "x-amz-date"} | ({"x-amz-security-token"} if "token" in key else set())
        if mine != signature or service != "monitoring" or not must <= set(signed.split(";")):
            raise Refused(*REFUSALS["signature"])
        return key, region

    # The action, and what is asked of it by its shape.
    def asked(self, body):
        kind = self.headers["Content-Type"].partition(";")[0]
        target, _, action = self.headers.get("X-Amz-Target", "").partition(".")
        if target == prefix and kind == "application/x-amz-json-1.0" and action in OPERATIONS:
            return action, lambda _: json.loads(body)
        form = dict(parse_qsl(body.decode(), keep_blank_values=True))
        action = form.pop("Action", action)
        if form.pop("Version", "") != SERVICE.api_version or kind != FORM or action not in OPERATIONS:
            raise Refused(404, "UnknownOperationException", action)
        return action, lambda shape: unfold(shape, {tuple(name.split(".")): text for name, text in form.items()})

    def ask(self, region, body):
        action, read = self.asked(body)
        operation = SERVICE.operation_model(action)
        asked = read(operation.input_shape)
        check(asked, operation.input_shape)
        answer = OPERATIONS[action](region, asked)
        check(answer, operation.output_shape)
        written, protocol = json.dumps(spelt(answer)), "json"
        if not self.is_json():
            written, protocol = fold(f"{action}Result", operation.output_shape, answer), "query"
            written = f"<Response>{written}<ResponseMetadata/></Response>"
        whole = {"status_code": 200, "headers": {}, "body": written.encode()}
        parsers.create_parser(protocol).parse(whole, operation.output_shape)
        return written.encode()

    def is_json(self):
        return "X-Amz-Target" in self.headers


def serve(certificate=None):
    server = ThreadingHTTPServer(("127.0.0.1", 0), CloudWatch)
    if certificate:
        words = "req -x509 -newkey rsa:2048 -nodes -days 1 -subj /CN=loopback -addext subjectAltName=IP:127.0.0.1"
        both = ["openssl", *words.split(), "-keyout", certificate + ".key", "-out", certificate]
        subprocess.run(both, check=True, capture_output=True)
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(certificate, certificate + ".key")
        server.socket = context.wrap_socket(server.socket, server_side=True)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    return server.server_port


print(serve(), *(serve(each) for each in sys.argv[2:3]), flush=True)
sys.stdin.read()
