"""The manual page can be set, and names every option and variable.

    manual_page.py PAGE PROGRAM
"""

import os
import re
import subprocess
import sys
import unittest

PAGE, PROGRAM = sys.argv[1:]


class ManualPage(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.set_page = subprocess.run(
            ["man", "--warnings", "--local-file", PAGE], text=True, capture_output=True,
            check=False, env=dict(os.environ, LC_ALL="C.UTF-8", MANWIDTH="80", MANPAGER="cat"))

    def test_is_set_without_a_warning(self):
        self.assertEqual((self.set_page.returncode, self.set_page.stderr), (0, ""))

    def test_names_what_the_program_says_of_itself(self):
        said = subprocess.run([PROGRAM, "--help"], text=True, capture_output=True,
                              check=True).stdout
        words = set(re.findall(r"--(?!help-all)[a-z-]+|TRELLISPORT_[A-Z_]+", said))
        self.assertIn("TRELLISPORT_BASE_URL", words)
        page = self.set_page.stdout.replace("\u2010", "-")
        self.assertEqual([word for word in sorted(words) if word not in page], [])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
