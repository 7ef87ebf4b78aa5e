"""Holds the description of the service's interface against the practice service.

    service_description.py --description FILE --service FILE

Every operation of the description is called, and every reply must be as it says, with no key that
it does not name; what the description leaves out or invents is found both ways.
"""

import argparse
import json
import os
import sys
import tempfile
import urllib.error
import urllib.request
from pathlib import Path

import yaml
from harness.checks import CheckFailed, check, check_equal
from harness.practice_service import PracticeService
from jsonschema import Draft202012Validator, RefResolver


class Description:
    """The OpenAPI document."""

    def __init__(self, file):
        self.document = yaml.safe_load(Path(file).read_text(encoding="utf-8"))
        self._resolver = RefResolver.from_schema(self.document)
        self.called = set()

    def operations(self):
        return {(method.upper(), path) for path, item in self.document["paths"].items()
                for method in item if method in ("get", "post", "put", "patch", "delete")}

    def reply_schema(self, method, path, status):
        replies = self.document["paths"][path][method.lower()]["responses"]
        return self._content(replies[str(status)])

    def request_schema(self, method, path):
        return self._content(self.document["paths"][path][method.lower()]["requestBody"])

    def complaints(self, schema, value):
        validator = Draft202012Validator(schema, resolver=self._resolver)
        found = [f"{'/'.join(map(str, error.path))}: {error.message}"
                 for error in validator.iter_errors(value)]
        return found + list(self._unknown_keys(schema, value, ""))

    def described_keys(self, name):
        return set(self._properties({"$ref": f"#/components/schemas/{name}"}))

    def _content(self, place):
        place = self._resolved(place)
        return place["content"]["application/json"]["schema"]

    def _resolved(self, place):
        while "$ref" in place:
            place = self._resolver.resolve(place["$ref"])[1]
        return place

    def _properties(self, schema):
        schema = self._resolved(schema)
        found = dict(schema.get("properties", {}))
        for part in schema.get("allOf", []):
            found.update(self._properties(part))
        return found

    def _unknown_keys(self, schema, value, where):
        schema = self._resolved(schema)
        if isinstance(value, list):
            for place, item in enumerate(value):
                yield from self._unknown_keys(schema.get("items", {}), item, f"{where}[{place}]")
        elif isinstance(value, dict) and "additionalProperties" not in schema:
            for key in sorted(set(value) - set(self._properties(schema))):
                yield f"{where}.{key} is not described"


class Caller:
    """Calls operations as the description has them."""

    def __init__(self, description, service):
        self._description = description
        self._service = service

    def __call__(self, method, path, body=None, **places):
        self._description.called.add((method, path))
        url = self._service.base_url + path.format(**places)
        headers, data = {}, None
        if body is not None:
            wrong = self._description.complaints(
                self._description.request_schema(method, path), body)
            check_equal(f"{method} {path}: what is wrong with the request", wrong, [])
            headers, data = {"Content-Type": "application/json"}, json.dumps(body).encode()
        request = urllib.request.Request(url, data=data, headers=headers, method=method)
        with urllib.request.urlopen(request, context=self._service.context, timeout=20) as reply:
            value, status = json.load(reply), reply.status
        wrong = self._description.complaints(
            self._description.reply_schema(method, path, status), value)
        if wrong:
            raise CheckFailed(f"{method} {url}: the reply is not as described:\n"
                              + "\n".join(wrong[:20]))
        return value


def run(description, service):
    call = Caller(description, service)
    call("GET", "/dashboard")
    projects = call("GET", "/projects")
    seen = {"Project": set(), "ProjectDetail": set(), "Message": set(), "Decision": set(),
            "BidInfo": set(), "TimelineEvent": set(), "DevLog": set(), "Report": set()}
    lists = {"messages": "Message", "decisions": "Decision", "bids": "BidInfo",
             "timeline": "TimelineEvent", "logs": "DevLog", "reports": "Report"}
    pending = None
    for project in projects:
        seen["Project"] |= set(project)
        seen["ProjectDetail"] |= set(call("GET", "/projects/{projectId}", projectId=project["id"]))
        for part, record in lists.items():
            records = call("GET", "/projects/{projectId}/" + part, projectId=project["id"])
            for one in records:
                seen[record] |= set(one)
                if record == "Decision" and one["status"] == "pending":
                    pending = pending or (project["id"], one["id"])
    for record, keys in seen.items():
        check_equal(f"the keys of {record}", sorted(description.described_keys(record)),
                    sorted(keys))
    config = call("GET", "/config")
    call("PUT", "/config", dict(config, max_daily_bids="3"))
    check_equal("the setting afterwards", call("GET", "/config")["max_daily_bids"], "3")
    call("POST", "/projects/{projectId}/decisions/{decisionId}/answer", {"answer": "Yes."},
         projectId=pending[0], decisionId=pending[1])
    call("POST", "/devices", {"device_token": "00ab10"})
    check_equal("the operations that were called", sorted(description.called),
                sorted(description.operations()))
    check_equal("how many there are", len(description.operations()), 13)
    check_refused(call)


def check_refused(call):
    for method, path, places in (("GET", "/projects/{projectId}", {"projectId": "nobody"}),
                                 ("GET", "/projects/{projectId}/logs", {"projectId": "nobody"})):
        try:
            call(method, path, **places)
        except urllib.error.HTTPError as error:
            check(f"{method} {path} of nobody is refused", 400 <= error.code < 500)
        else:
            raise CheckFailed(f"{method} {path} of nobody is answered")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    for name in ("description", "service"):
        parser.add_argument(f"--{name}", required=True, type=Path)
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        service = PracticeService(options.service, Path(folder) / "data", dict(os.environ),
                                  Path(folder) / "service.log")
        service.start()
        try:
            run(Description(options.description), service)
        except CheckFailed as failure:
            print(f"FAILED  {failure}")
            return 1
        finally:
            service.stop()
    return 0


if __name__ == "__main__":
    sys.exit(main())
