"""The project's version stands in the changelog and in the metainfo, too, and its licence has one name.

    one_version.py ROOT VERSION
"""

import re
import sys
import unittest
import xml.etree.ElementTree
from pathlib import Path

ROOT, VERSION = Path(sys.argv[1]), sys.argv[2]
PACKAGING = ROOT / "packaging"


class OneVersion(unittest.TestCase):
    def test_the_newest_entry_of_the_changelog_is_for_it(self):
        first = (PACKAGING / "debian/changelog").read_text(encoding="utf-8").splitlines()[0]
        self.assertEqual(re.match(r"trellisport-manager \((\S+)\) ", first)[1], VERSION)

    def test_the_newest_release_of_the_metainfo_is_it(self):
        tree = xml.etree.ElementTree.parse(PACKAGING / "trellisport-manager.metainfo.xml.in")
        self.assertEqual(tree.find("releases/release").get("version"), "@PROJECT_VERSION@")

    def test_the_licence_has_one_name(self):
        name = "LicenseRef-TrellisportManager"
        tree = xml.etree.ElementTree.parse(PACKAGING / "trellisport-manager.metainfo.xml.in")
        self.assertEqual(tree.find("project_license").text, name)
        said = (PACKAGING / "debian/copyright").read_text(encoding="utf-8")
        self.assertEqual(re.findall(r"^License: (\S+)$", said, re.MULTILINE), [name])
        description = (ROOT / "docs/service-api.yaml").read_text(encoding="utf-8")
        self.assertEqual(re.findall(r"^ +identifier: (\S+)$", description, re.MULTILINE), [name])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
