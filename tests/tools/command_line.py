#!/usr/bin/env python3
"""command_line.py ZDM [EMULATOR...]: runs the command line and checks what it prints."""
import json
import subprocess
import sys
import unittest

ZDM = sys.argv[2:] + sys.argv[1:2]
STREAM = "{65808542-5A64-45F2-B71A-A6A6D03CD2D5}"


def zdm(*arguments):
    done = subprocess.run(ZDM + list(arguments), capture_output=True, text=True, timeout=120)
    return done.returncode, done.stdout, done.stderr


class Classes(unittest.TestCase):
    def test_json_lists_the_table(self):
        code, out, _ = zdm("classes", "--json")
        rows = json.loads(out)
        self.assertEqual(code, 0)
        self.assertEqual(len(rows), 44)
        self.assertEqual([list(row) for row in rows], [["name", "clsid", "interfaces"]] * 44)
        self.assertEqual(rows[0], {"name": "CZCategoryReltn",
                                   "clsid": "{A3B294BC-A6C9-444E-A07C-AC8F21FA9198}",
                                   "interfaces": ["IZObject", "IZRelation", "IZCategoryReltn",
                                                  "IZSingleReltn"]})
        self.assertEqual([row["name"] for row in rows if row["clsid"] is None],
                         ["ZReltnVisitorDiffuse", "ZReltnVisitorMapIDForPaste",
                          "ZReltnVisitorStatus"])

    def test_text_has_a_line_a_class(self):
        code, out, _ = zdm("classes")
        self.assertEqual((code, len(out.splitlines())), (0, 44))


class Create(unittest.TestCase):
    def test_tells_what_the_object_answers_to(self):
        code, out, _ = zdm("--json", "create", STREAM)
        self.assertEqual(code, 0)
        self.assertEqual(json.loads(out)["interfaces"], ["IZObject", "IZStream"])
        self.assertEqual(json.loads(out)["references"], 1)

    def test_failures_are_one_line_and_a_code(self):
        for arguments, expected in ((["create", STREAM.replace("6", "7")], 1),
                                    (["create", "stream"], 2), (["create"], 2), ([], 2),
                                    (["no-such-command"], 2)):
            with self.subTest(arguments):
                code, out, err = zdm(*arguments)
                self.assertEqual((code, out), (expected, ""))
                self.assertNotEqual(err, "")


class Usage(unittest.TestCase):
    def test_names_what_it_does_not_know(self):
        for word in "clases", "--jsn":
            with self.subTest(word):
                code, _, err = zdm(word, "extra")
                self.assertEqual(code, 2)
                self.assertIn(word, err)

    def test_tells_its_version(self):
        self.assertRegex(zdm("--version")[1], r"^zdm \d+\.\d+\.\d+\n$")


unittest.main(argv=sys.argv[:1])
