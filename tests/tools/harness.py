"""What the tests of the command line share. Their arguments: ZDM SAMPLE_DOCUMENT [EMULATOR...]."""
import json
import os
import shutil
import subprocess
import sys
import tempfile
import unittest

ZDM, SAMPLE_DOCUMENT = (os.path.abspath(program) for program in sys.argv[1:3])
EMULATOR = sys.argv[3:]
IS_WINDOWS = bool(EMULATOR)


def run(program, *arguments, **options):
    """Code, standard output and standard error, as text."""
    done = subprocess.run(EMULATOR + [program, *arguments], capture_output=True, timeout=120,
                          **options)
    return done.returncode, done.stdout.decode(), done.stderr.decode()


def zdm(*arguments, **options):
    return run(ZDM, *(str(argument) for argument in arguments), **options)


def read_json(*arguments):
    code, out, err = zdm("--json", *arguments)
    if code not in (0, 11, 12, 13):
        raise AssertionError(f"{arguments} ended with {code}: {err}")
    return json.loads(out)


def contents(path):
    with open(path, "rb") as file:
        return file.read()


class DocumentTest(unittest.TestCase):
    """In a folder of its own, with the sample document."""

    @classmethod
    def setUpClass(cls):
        cls.source = tempfile.mkdtemp()
        cls.addClassCleanup(shutil.rmtree, cls.source)
        code, _, err = run(SAMPLE_DOCUMENT, os.path.join(cls.source, "sample.zdm"))
        if code != 0:
            raise AssertionError(f"no sample document: {err}")

    def setUp(self):
        self.folder = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, self.folder, True)
        former = os.getcwd()
        os.chdir(self.folder)
        self.addCleanup(os.chdir, former)
        shutil.copy(os.path.join(self.source, "sample.zdm"), "sample.zdm")

    def expect(self, expected, *arguments, **options):
        """Runs, checks the exit code, and gives standard output."""
        code, out, err = zdm(*arguments, **options)
        self.assertEqual(code, expected, err)
        return out


def main():
    unittest.main(argv=sys.argv[:1])
