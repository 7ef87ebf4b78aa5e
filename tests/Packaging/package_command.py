"""What ./package makes and leaves out, and how it keeps the Debian that it builds in. Debian's tools
are played.

    package_command.py ROOT
"""

import os
import re
import shutil
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

ROOT = Path(sys.argv[1])
DAY_S = 24 * 60 * 60
# What stands for a tool: the lines of a shell script.
TOOLS = {
    "apt-get": "exit 0",
    "ccache": "echo /cache",
    "debootstrap": 'for root; do :; done; mkdir -p "$root/etc/apt/sources.list.d"',
    "dpkg": "echo $ARCHITECTURE",
    "dpkg-buildpackage": "touch ../trellisport-manager_2.0_$ARCHITECTURE.deb",
    "dpkg-deb": 'mkdir -p usr/bin; touch usr/bin/trellisport-manager; tar -c ./usr/bin',
    "dpkg-query": 'for name; do echo "ii  $name"; done',
    "git": r"printf 'package\0'",
    "id": "echo $USER_ID",
    "lintian": "exit 0",
    "sudo": 'exec "$@"',
    # unshare --mount --propagation private bash -euc SCRIPT inside ROOT COUNT [BIND...] COMMAND...
    "unshare": 'shift 7; echo "$(basename "$1"): ${*:3}" >>"$NOTES"; ! grep -qs "$3" "$NOTES.fails"',
}


class PackageCommand(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.sources = self.folder / "sources"
        shutil.copytree(ROOT / "scripts", self.sources / "scripts",
                        ignore=shutil.ignore_patterns("__pycache__"))
        shutil.copytree(ROOT / "packaging/debian", self.sources / "packaging/debian")
        shutil.copy(ROOT / "package", self.sources)
        hardening = self.sources / "scripts/check-hardening"
        hardening.write_text("#!/bin/sh\n", encoding="utf-8")
        tools = self.folder / "tools"
        tools.mkdir()
        for name, lines in TOOLS.items():
            tool = tools / name
            tool.write_text(f"#!/bin/bash\n{lines}\n", encoding="utf-8")
            tool.chmod(0o755)
        self.roots = self.folder / "cache/trellisport-manager/debian-12"
        self.notes = self.folder / "notes"
        self.environment = dict(
            os.environ, PATH=f"{tools}:{os.environ['PATH']}", NOTES=str(self.notes), USER_ID="0",
            ARCHITECTURE="amd64", XDG_CACHE_HOME=str(self.folder / "cache"))

    def package(self, *options, **environment):
        return subprocess.run(
            [self.sources / "package", *options], text=True, capture_output=True, check=False,
            env=dict(self.environment, **environment))

    def chroot_script(self, script):
        """Runs the script with the functions of chroot.sh; what was done in a root, in lines."""
        self.notes.unlink(missing_ok=True)
        done = subprocess.run(
            ["bash", "-uc", f". scripts/common.sh; . scripts/chroot.sh; {script}"], text=True,
            cwd=self.sources, env=self.environment, capture_output=True, check=False)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        return (self.notes.read_text(encoding="utf-8").splitlines() if self.notes.exists() else [],
                done.stdout)

    def make_fail(self, command):
        Path(f"{self.notes}.fails").write_text(command + "\n", encoding="utf-8")

    def grow_older(self, seconds):
        stamp = self.roots / "base.done"
        then = time.time() - seconds
        os.utime(stamp, (then, then))

    def packages(self):
        return sorted(file.name for file in (self.sources / "build-package").glob("*.deb"))

    def test_without_an_option_root_gets_both_architectures(self):
        # The ARM one can't be built by played tools; that it is begun is what shows here.
        done = self.package()
        self.assertEqual(self.packages(), ["trellisport-manager_2.0_amd64.deb"])
        self.assertIn("Building for arm64", done.stdout)
        self.assertNotIn("left out", done.stdout)

    def test_whoever_is_not_root_is_told_what_is_left_out_and_how_to_get_it(self):
        done = self.package(USER_ID="1000")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertNotIn("Building for arm64", done.stdout)
        self.assertIn("arm64 is left out", done.stdout)
        self.assertIn("./package --arm64", done.stdout)

    def test_on_another_architecture_its_own_is_made(self):
        done = self.package(ARCHITECTURE="arm64")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(self.packages(), ["trellisport-manager_2.0_arm64.deb"])
        self.assertIn("left out", done.stdout)

    def test_the_native_one_can_be_had_alone(self):
        done = self.package("--native")
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertNotIn("arm64", done.stdout)

    def test_packages_of_earlier_versions_are_gone(self):
        out = self.sources / "build-package"
        out.mkdir()
        for name in ("1.0_amd64", "1.0_arm64"):
            (out / f"trellisport-manager_{name}.deb").touch()
        self.assertEqual(self.package("--native").returncode, 0)
        self.assertEqual(self.packages(), ["trellisport-manager_1.0_arm64.deb",
                                           "trellisport-manager_2.0_amd64.deb"])

    def test_the_readme_names_the_tests_that_run_under_emulation(self):
        said = (ROOT / "README.md").read_text(encoding="utf-8")
        command = (ROOT / "package").read_text(encoding="utf-8")
        emulated = re.search(r"^emulated=\(([^)]*)\)", command, re.MULTILINE)[1].split()
        self.assertEqual(re.findall(r"`(\w+_tests)`", said), emulated)

    def test_a_root_is_made_once(self):
        done, _ = self.chroot_script("system_with cross cross dpkg --add-architecture arm64")
        self.assertIn("cross: dpkg --add-architecture arm64", done)
        self.assertIn("qemu-user-static", done[-1].split())
        self.assertEqual(self.chroot_script("system_with cross cross true"), ([], ""))

    def test_a_root_is_made_anew_when_it_needs_another_package(self):
        self.chroot_script("system_with cross cross true")
        listed = self.sources / "scripts/packages.txt"
        listed.write_text(listed.read_text(encoding="utf-8").replace(
            "[cross]\n", "[cross]\nanother-one\n"), encoding="utf-8")
        done, _ = self.chroot_script("system_with cross cross true")
        self.assertIn("another-one", done[-1].split())

    def test_the_bare_system_gets_its_updates_once_a_day(self):
        self.chroot_script("base_system")
        self.assertEqual(self.chroot_script("base_system"), ([], ""))
        self.grow_older(DAY_S + 100)
        done, said = self.chroot_script("base_system")
        self.assertTrue(any(" apt-get upgrade " in line for line in done), done)
        self.assertEqual(said, "")
        self.assertEqual(self.chroot_script("base_system"), ([], ""))

    def test_without_a_network_the_bare_system_serves_as_it_is(self):
        self.chroot_script("base_system")
        self.grow_older(DAY_S + 100)
        self.make_fail("apt-get")
        _, said = self.chroot_script("base_system")
        self.assertIn("going on without them", said)
        Path(f"{self.notes}.fails").unlink()
        done, _ = self.chroot_script("base_system")
        self.assertTrue(any(" apt-get upgrade " in line for line in done), done)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
