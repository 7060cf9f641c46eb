#!/usr/bin/env python3
"""exit_codes.py ZDM SAMPLE_DOCUMENT [EMULATOR...]: how the command line ends when it cannot do its
work: a code, one line on standard error, and the file as it was."""
import os
import stat
import subprocess
import unittest

from harness import IS_WINDOWS, ZDM, DocumentTest, contents, main, zdm


def damaged(content):
    """One bit of a name is flipped."""
    at = content.index("South wall".encode("utf-16-le"))
    return content[:at] + bytes([content[at] ^ 4]) + content[at + 1:]


def newer(content):
    """The format version is one more."""
    at = content.index(b"ZDM\r\n\x1a\n\x00") + 8
    return content[:at] + bytes([content[at] + 1]) + content[at + 1:]


class Failing(DocumentTest):
    def refused(self, expected, *arguments, **options):
        code, out, err = zdm(*arguments, **options)
        self.assertEqual((code, out), (expected, ""), err)
        self.assertRegex(err, r"\Azdm: [^\r\n]+\r?\n\Z")
        return err

    def write(self, name, content):
        with open(name, "wb") as file:
            file.write(content)

    def test_files_that_are_no_sound_documents(self):
        os.mkdir("folder")
        sample = contents("sample.zdm")
        self.write("empty.zdm", b"")
        self.write("text.zdm", b"not a document\n" * 100)
        self.write("damaged.zdm", damaged(sample))
        self.write("newer.zdm", newer(sample))
        for name, code in (("none.zdm", 3), ("nowhere/none.zdm", 3), ("folder", 4),
                           ("empty.zdm", 5), ("text.zdm", 5), ("newer.zdm", 6),
                           ("damaged.zdm", 7)):
            before = contents(name) if os.path.isfile(name) else None
            # Those that load objects and the one that does not, and one that would save.
            for arguments in (("tree", name), ("info", name), ("set", name, 2, "name=x")):
                if arguments[0] == "info" and name == "damaged.zdm":
                    continue  # ends so too, and tells first what the index says
                with self.subTest(arguments):
                    self.assertIn(name.split("/")[0], self.refused(code, *arguments))
            if before is not None:
                self.assertEqual(contents(name), before)
        self.assertEqual(sorted(os.listdir(".")), ["damaged.zdm", "empty.zdm", "folder",
                                                   "newer.zdm", "sample.zdm", "text.zdm"])

    def test_objects_that_are_not_there(self):
        for arguments in (("show", "sample.zdm", 9), ("refs", "sample.zdm", 0),
                          ("set", "sample.zdm", -5, "name=x"), ("delete", "sample.zdm", 4, 9),
                          ("relate", "sample.zdm", 9, 2), ("add", "sample.zdm", "x", "--in", 9),
                          ("graph", "sample.zdm", 9)):
            with self.subTest(arguments):
                self.refused(10, *arguments)
        self.refused(11, "add", "sample.zdm", "x", "--in", 2)
        self.refused(1, "create", "{75808542-5A64-45F2-B71A-A6A6D03CD2D5}")

    def test_new_never_replaces_a_file(self):
        before = contents("sample.zdm")
        self.refused(11, "new", "sample.zdm")
        self.assertEqual(contents("sample.zdm"), before)
        self.refused(3, "new", "nowhere/made.zdm")

    @unittest.skipIf(IS_WINDOWS, "file names without control characters there")
    def test_a_hostile_file_name_stays_on_its_line(self):
        self.assertIn("\\u001b[31m\\u000a", self.refused(3, "info", "\x1b[31m\n"))

    @unittest.skipIf(IS_WINDOWS or os.geteuid() == 0 and not os.path.exists("/usr/bin/setpriv"),
                     "modes of files do not bind whoever runs this")
    def test_what_may_not_be_read_or_written(self):
        drop = ["setpriv", "--reuid=65534", "--clear-groups"] if os.geteuid() == 0 else []
        os.chmod(self.folder, 0o755)
        before = contents("sample.zdm")

        def refused(*arguments):
            done = subprocess.run(drop + [ZDM, *arguments], capture_output=True, text=True,
                                  timeout=120)
            self.assertEqual((done.returncode, done.stdout), (4, ""), done.stderr)
            self.assertEqual(done.stderr.count("\n"), 1)

        os.chmod(self.folder, stat.S_IRUSR | stat.S_IXUSR | stat.S_IXOTH | stat.S_IROTH)
        refused("set", "sample.zdm", "2", "name=x")
        os.chmod("sample.zdm", 0)
        refused("info", "sample.zdm")
        os.chmod(self.folder, 0o755)
        os.chmod("sample.zdm", 0o644)
        self.assertEqual(contents("sample.zdm"), before)

    @unittest.skipIf(IS_WINDOWS, "file size limits of a shell")
    def test_a_disk_without_room_keeps_the_old_file(self):
        before = contents("sample.zdm")
        done = subprocess.run(["bash", "-c", "ulimit -f 1; trap '' XFSZ; exec \"$0\" \"$@\"",
                               ZDM, "set", "sample.zdm", "2", "name=x"],
                              capture_output=True, text=True, timeout=120)
        self.assertIn(done.returncode, (1, 8), done.stderr)
        self.assertEqual(done.stderr.count("\n"), 1)
        self.assertEqual(contents("sample.zdm"), before)
        self.assertEqual(os.listdir("."), ["sample.zdm"])

    @unittest.skipUnless(os.path.exists("/dev/full") and not IS_WINDOWS, "no /dev/full here")
    def test_output_that_cannot_be_written_is_a_failure(self):
        with open("/dev/full", "w", encoding="utf-8") as full:
            done = subprocess.run([ZDM, "dump", "sample.zdm"], stdout=full,
                                  stderr=subprocess.PIPE, text=True, timeout=120)
        self.assertEqual(done.returncode, 8)
        self.assertIn("output", done.stderr)


main()
