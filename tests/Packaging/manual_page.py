"""The manual page can be set, and names every option and variable.

    manual_page.py PAGE PROGRAM DOCUMENT...
"""

import os
import re
import subprocess
import sys
import unittest
from pathlib import Path

PAGE, PROGRAM, *DOCUMENTS = sys.argv[1:]
VARIABLE = r"\b(?:TRELLISPORT|UNIFIEDPUSH)_[A-Z_]+"


class ManualPage(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.set_page = subprocess.run(
            ["man", "--warnings", "--local-file", PAGE], text=True, capture_output=True,
            check=False, env=dict(os.environ, LC_ALL="C.UTF-8", MANWIDTH="80", MANPAGER="cat"))

    def test_is_set_without_a_warning(self):
        self.assertEqual((self.set_page.returncode, self.set_page.stderr), (0, ""))

    def lacking(self, words):
        page = self.set_page.stdout.replace("\u2010", "-")
        return [word for word in sorted(words) if word not in page]

    def test_names_every_variable_that_the_documents_name(self):
        words = set()
        for document in DOCUMENTS:
            words |= set(re.findall(VARIABLE, Path(document).read_text(encoding="utf-8")))
        self.assertIn("TRELLISPORT_TEXT_SCALE", words)
        self.assertEqual(self.lacking(words), [])

    def test_names_what_the_program_says_of_itself(self):
        said = subprocess.run([PROGRAM, "--help"], text=True, capture_output=True,
                              check=True).stdout
        words = set(re.findall(rf"--(?!help-all)[a-z-]+|{VARIABLE}", said))
        self.assertIn("TRELLISPORT_BASE_URL", words)
        self.assertEqual(self.lacking(words), [])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
