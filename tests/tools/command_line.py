#!/usr/bin/env python3
"""command_line.py ZDM SAMPLE_DOCUMENT [EMULATOR...]: what each command prints and does to a file."""
import json
import os
import shutil
import unittest
import xml.dom.minidom

from harness import (IS_WINDOWS, SAMPLE_DOCUMENT, DocumentTest, contents, main, read_json, run,
                     zdm)

STREAM = "{65808542-5A64-45F2-B71A-A6A6D03CD2D5}"


# What every document comes with: ID, name, owner, depth.
DEFAULTS = [(-2, "*ZMaterialMgr", -1, 1), (-3, "\u7f3a\u7701", -2, 2), (-4, "*ZCategoryMgr", -1, 1)]


class Library(unittest.TestCase):
    def test_classes_as_json_list_the_table(self):
        rows = read_json("classes")
        self.assertEqual(len(rows), 44)
        self.assertEqual([list(row) for row in rows], [["name", "clsid", "interfaces"]] * 44)
        self.assertEqual(rows[0], {"name": "CZCategoryReltn",
                                   "clsid": "{A3B294BC-A6C9-444E-A07C-AC8F21FA9198}",
                                   "interfaces": ["IZObject", "IZRelation", "IZCategoryReltn",
                                                  "IZSingleReltn"]})
        self.assertEqual([row["name"] for row in rows if row["clsid"] is None],
                         ["ZReltnVisitorDiffuse", "ZReltnVisitorMapIDForPaste",
                          "ZReltnVisitorStatus"])
        code, out, _ = zdm("classes")
        self.assertEqual((code, len(out.splitlines())), (0, 44))

    def test_create_tells_what_the_object_answers_to(self):
        created = read_json("create", STREAM)
        self.assertEqual((created["interfaces"], created["references"]),
                         (["IZObject", "IZStream"], 1))


class Usage(unittest.TestCase):
    def test_wrong_lines_end_with_2_and_say_why(self):
        for line in ("create stream", "create", "", "clases extra", "--jsn extra", "show x.zdm",
                     "show x.zdm two", "set x.zdm 1 colour", "set x.zdm 1 =red",
                     "delete x.zdm"):
            with self.subTest(line):
                code, out, err = zdm(*line.split())
                self.assertEqual((code, out), (2, ""))
                self.assertNotEqual(err, "")
        self.assertIn("clases", zdm("clases", "extra")[2])

    def test_help_of_every_command_has_an_example(self):
        code, out, _ = zdm("--help")
        self.assertEqual(code, 0)
        commands = [line.split()[0] for line in out.split("Subcommands:\n")[1].split("\nExit")[0]
                    .splitlines() if line.startswith("  ") and line[2] != " "]
        self.assertEqual(len(commands), 23)
        for command in commands if not IS_WINDOWS else commands[:2]:
            self.assertIn(f"  zdm {command}" if command != "dump" else "zdm dump",
                          zdm(command, "--help")[1])

    def test_version(self):
        self.assertRegex(zdm("--version")[1], r"^zdm \d+\.\d+\.\d+\n$")


class MakingAndChanging(DocumentTest):
    def test_a_document_made_object_by_object(self):
        self.expect(0, "new", "made.zdm", "--name", "House")
        self.assertEqual(self.expect(0, "add", "made.zdm", "Walls", "--manager"), "1\n")
        self.assertEqual(read_json("add", "made.zdm", "South wall", "--in", 1), {"id": 2})
        self.expect(0, "add", "made.zdm", "Door")
        self.expect(0, "relate", "made.zdm", 3, 2, "--diffusible")
        rows = read_json("tree", "made.zdm")
        self.assertEqual([(row["id"], row["name"], row["owner"], row["depth"]) for row in rows],
                         [(-1, "House", -1, 0), *DEFAULTS, (1, "Walls", -1, 1), (2, "South wall", 1, 2),
                          (3, "Door", -1, 1)])
        edges = read_json("graph", "made.zdm")["edges"]
        self.assertEqual(edges, [{"from": 3, "to": 2, "via": "relation", "diffusible": True}])

    def test_set_changes_the_name_alone(self):
        before = self.expect(0, "dump", "sample.zdm").splitlines()
        self.expect(0, "set", "sample.zdm", 2, "name=North = wall")
        after = self.expect(0, "dump", "sample.zdm").splitlines()
        changed = [line for line in after if line not in before]
        self.assertEqual(len(changed), 2)
        self.assertEqual(changed[0], '2 name "North = wall"')
        self.assertTrue(changed[1].startswith("2 record "))
        self.expect(0, "set", "sample.zdm", -1, "name=Other")
        self.assertEqual(read_json("show", "sample.zdm", -1)["name"], "Other")

    def test_text_keeps_every_letter(self):
        for name in ("T\u00fcr \u6728 \U0001F6AA", "[a,b]", 'quote " and \\', "", "-x"):
            with self.subTest(name):
                self.expect(0, "set", "sample.zdm", 4, "name=" + name)
                self.assertEqual(read_json("show", "sample.zdm", 4)["name"], name)

    def test_delete_names_what_is_in_the_way_and_deletes_nothing(self):
        before = contents("sample.zdm")
        out = self.expect(11, "delete", "sample.zdm", 2)
        self.assertIn('in the way: 2 "South wall" CZDMPlainObject is referred to by 3', out)
        self.assertEqual(read_json("delete", "sample.zdm", 2)["obstacles"],
                         [{"object": 2, "why": "referred", "by": 3}])
        plan = read_json("delete", "sample.zdm", 3, "--dry-run")
        self.assertEqual(plan, {"deleted": False, "objects": [3], "obstacles": [],
                                "dangling": [{"from": 4, "to": 3, "via": "relation"}],
                                "withoutCurrent": []})
        self.expect(11, "delete", "sample.zdm", -1)
        self.assertEqual(contents("sample.zdm"), before)

    def test_delete_takes_all_that_a_manager_holds(self):
        out = self.expect(0, "delete", "sample.zdm", 1)
        self.assertEqual(out.splitlines(), [
            'will refer to nothing: 4 "Key" CZDMPlainObject through relation to 3',
            "deleted 4 objects"])
        self.assertEqual([row["id"] for row in read_json("tree", "sample.zdm")],
                         [-1, -2, -3, -4, 6, 7, 4])
        self.assertEqual(read_json("refs", "sample.zdm", 4)["refersTo"][0]["id"], 3)


class Parameters(DocumentTest):
    def setUp(self):
        super().setUp()
        self.assertEqual(run(SAMPLE_DOCUMENT, "doors.zdm", "parameters")[0], 0)

    def sheet(self):
        return {property["name"]: property for group in read_json("show", "doors.zdm", 11)["sheet"]
                for property in group["properties"]}

    def test_definitions_have_a_line_each(self):
        key = "{D0000000-0000-0000-0000-00000000000%d}"
        lines = self.expect(0, "definitions", "doors.zdm").splitlines()
        self.assertEqual(lines[:2], [f'2 "W" {key % 1} type=3 index=7 group="Size"',
                                     f'3 "Note" {key % 2} type=1 index=3 group="Shape"'])
        self.assertEqual(len(lines), 6)
        self.assertEqual(read_json("definitions", "doors.zdm")[0], {
            "id": 2, "key": key % 1, "name": "W", "type": 3, "index": 7, "group": "Size",
            "kind": 3, "flags": 0, "value": None})
        self.assertEqual(read_json("show", "doors.zdm", 2)["definition"]["group"], "Size")
        self.assertEqual(read_json("show", "doors.zdm", 1)["groups"],
                         [{"index": 3, "name": "Shape"}, {"index": 7, "name": "Size"}])
        self.assertEqual(self.expect(0, "definitions", "sample.zdm"), "")

    def test_show_prints_the_sheet_in_the_order_of_its_groups(self):
        lines = self.expect(0, "show", "doors.zdm", 11).splitlines()
        key = "key={D0000000-0000-0000-0000-00000000000%d}"
        last = "readOnly=false linked=false"
        self.assertEqual([line for line in lines if line.startswith("sheet")], [
            'sheet name="Shape"',
            f'sheet.properties {key % 2} name="Note" value="a \\"b\\"\\u202e" {last}',
            f'sheet.properties {key % 4} name="Kind" value=1 choice="oak" {last}',
            f'sheet.properties {key % 5} name="Open" value=true readOnly=true linked=false',
            f'sheet.properties {key % 6} name="Stands in" value=10 {last}',
            'sheet name="Size"',
            f'sheet.properties {key % 1} name="Width" value=0.9 {last}',
            f'sheet.properties {key % 3} name="Height" value=2.5 readOnly=false linked=true'])
        parameters = read_json("show", "doors.zdm", 11)["parameters"]
        self.assertEqual([(row["key"], row["flags"], row["type"], row["value"])
                          for row in parameters[2:]],
                         [(3, 10, "double", 1.0), (4, 10, "long", 1), (65535, 14, "bool", True),
                          (6, 10, "relation", 10)])
        own = read_json("show", "doors.zdm", 9)
        self.assertEqual((own["parameter"]["value"], own["sheet"]), (2.5, []))
        groups = read_json("show", "doors.zdm", 8)["sheet"]
        self.assertEqual([(group["name"], group["properties"][0]["value"]) for group in groups],
                         [("Size", 2.5)])

    def test_set_changes_a_value_through_its_property(self):
        before = self.expect(0, "dump", "doors.zdm").splitlines()
        for change, name, value in (("Width=2.25", "Width", 2.25), ("Width=10", "Width", 10.0),
                                    ("Note=T\u00fcr=1", "Note", "T\u00fcr=1"),
                                    ("Kind=pine", "Kind", 2), ("K=1", "Kind", 1),
                                    ("{D0000000-0000-0000-0000-000000000001}=3", "Width", 3.0)):
            with self.subTest(change):
                self.expect(0, "set", "doors.zdm", 11, change)
                self.assertEqual(self.sheet()[name]["value"], value)
        self.expect(0, "set", "doors.zdm", 8, "Height=4")  # of the document's own parameter
        self.assertEqual(self.sheet()["Height"]["value"], 4.0)
        changed = {line.split()[0] for line in self.expect(0, "dump", "doors.zdm").splitlines()
                   if line not in before}
        self.assertEqual(changed, {"8", "9", "11"})

    def test_set_refuses_what_the_sheet_does(self):
        before = contents("doors.zdm")
        for change, code, why in (("Width=wide", 2, "not a value"), ("Width=1,5", 2, "not a value"),
                                  ("Kind=1.5", 2, "not a value"), ("Kind=elm", 2, "not a value"),
                                  ("Open=false", 11, "read-only"), ("Height=3", 11, "linked"),
                                  ("Stands in=3", 11, "cannot be set"), ("Depth=3", 11, "no property")):
            with self.subTest(change):
                ended, out, err = zdm("set", "doors.zdm", 11, change)
                self.assertEqual((ended, out), (code, ""))
                self.assertIn(why, err)
        self.assertEqual(contents("doors.zdm"), before)

    def test_refs_and_deletion_know_what_parameters_refer_to(self):
        refers = read_json("refs", "doors.zdm", 11)["refersTo"]
        self.assertEqual([row["id"] for row in refers if row["via"] == "parameter"],
                         [2, 3, 9, 4, 5, 6, 7, 10])
        self.assertEqual(read_json("refs", "doors.zdm", 10)["referredToBy"][0]["id"], 11)
        self.assertEqual([row["id"] for row in read_json("refs", "doors.zdm", 4)["referredToBy"]],
                         [9, 11])
        self.expect(11, "delete", "doors.zdm", 10)
        self.assertEqual(self.expect(0, "audit", "doors.zdm"), "nothing found\n")


class CopyingAndMerging(DocumentTest):
    def test_copies_refer_to_each_other_and_the_rest_is_named(self):
        out = self.expect(0, "copy", "sample.zdm", 3, 4)
        self.assertEqual(out.splitlines(), [
            'copied 3 "T\u00fcr" CZDMPlainObject as 8', 'copied 4 "Key" CZDMPlainObject as 9',
            'kept: the copy of 3 "T\u00fcr" CZDMPlainObject still refers to 2 through relation'])
        self.assertEqual([row["id"] for row in read_json("refs", "sample.zdm", 9)["refersTo"]], [8])
        self.assertEqual(read_json("show", "sample.zdm", 1)["holds"], [2, 3, 5, 8])
        self.expect(0, "audit", "sample.zdm")

    def test_a_copy_in_another_document_is_cut_from_the_first(self):
        self.expect(0, "new", "other.zdm")
        self.expect(0, "add", "other.zdm", "Walls", "--manager")
        before = contents("sample.zdm")
        copies = read_json("copy", "sample.zdm", 3, "--to", "other.zdm", "--in", 1)
        self.assertEqual(copies, {"copies": [{"original": 3, "copy": 2}], "leftOut": [],
                                  "references": [{"from": 3, "to": 2, "via": "relation",
                                                  "fate": "cut"}]})
        self.assertEqual(contents("sample.zdm"), before)
        copy = read_json("show", "other.zdm", 2)
        self.assertEqual((copy["owner"], len(copy["data"])), (1, 5))
        self.expect(11, "copy", "sample.zdm", 3, "--to", "other.zdm", "--in", 2)
        self.expect(11, "copy", "sample.zdm", -1)
        self.expect(10, "copy", "sample.zdm", 99)
        self.expect(2, "copy", "sample.zdm", 3, "--in", 1)

    def test_merging_a_copy_changes_nothing(self):
        shutil.copy("sample.zdm", "copy.zdm")
        report = read_json("merge", "sample.zdm", "copy.zdm", "-o", "both.zdm")
        self.assertEqual({row["decision"] for row in report["objects"]}, {"same", "merged"})
        self.assertEqual(contents("both.zdm"), contents("sample.zdm"))
        self.expect(11, "merge", "sample.zdm", "copy.zdm", "-o", "both.zdm")

    def test_a_dry_run_says_what_a_merge_does(self):
        shutil.copy("sample.zdm", "other.zdm")
        self.expect(0, "add", "other.zdm", "Gate", "--in", 1)
        self.expect(0, "relate", "other.zdm", 8, 4)
        self.expect(0, "set", "other.zdm", 2, "name=North wall")
        self.expect(2, "merge", "sample.zdm", "other.zdm")
        said = self.expect(0, "merge", "sample.zdm", "other.zdm", "--replace", "--dry-run")
        self.assertIn('added: 8 "Gate" CZDMPlainObject as 8', said)
        self.assertNotIn("replaced: -", said)
        self.assertEqual(sorted(os.listdir(".")), ["other.zdm", "sample.zdm"])
        self.assertEqual(self.expect(0, "merge", "sample.zdm", "other.zdm", "--replace", "-o",
                                     "both.zdm"), said)
        self.assertEqual(self.expect(0, "diff", "both.zdm", "other.zdm"), "")

    def test_diff_names_objects_and_fields(self):
        shutil.copy("sample.zdm", "other.zdm")
        self.expect(0, "diff", "sample.zdm", "other.zdm")
        self.expect(0, "set", "other.zdm", 2, "name=North wall")
        self.expect(0, "delete", "other.zdm", 4)
        self.expect(0, "add", "other.zdm", "Gate")
        lines = self.expect(13, "diff", "sample.zdm", "other.zdm").splitlines()
        self.assertEqual(lines[0], '- 4 "Key" CZDMPlainObject')
        self.assertRegex(lines[1], r'^\+ \d+ "Gate" CZDMPlainObject$')
        at = lines.index('~ 2 "South wall" CZDMPlainObject')
        self.assertEqual(lines[at + 1:at + 3], ['  - name "South wall"', '  + name "North wall"'])
        different = read_json("diff", "sample.zdm", "other.zdm")["different"]
        self.assertEqual([row["id"] for row in different], [-1, 2])
        self.assertEqual([field["field"] for field in different[0]["fields"]], ["holds"])


class Looking(DocumentTest):
    def test_info_reads_the_index(self):
        info = read_json("info", "sample.zdm")
        self.assertEqual([info[key] for key in ("fileBytes", "formatVersion", "records",
                                                "recordStreams", "lowestId", "highestId")],
                         [os.path.getsize("sample.zdm"), 1, 10, 1, -4, 7])

    def test_tree_draws_managers_above_what_they_hold(self):
        self.assertEqual(self.expect(0, "tree", "sample.zdm").splitlines(), [
            '-1 "Sample" CZDocument',
            '├─ -2 "*ZMaterialMgr" CZDMMaterialMgr',
            '│  └─ -3 "\u7f3a\u7701" CZDMMaterial',
            '├─ -4 "*ZCategoryMgr" CZDMCategoryMgr',
            '│  ├─ 6 "Outside" CZDMCategory',
            '│  └─ 7 "Plaster" CZDMCategory',
            '├─ 1 "Walls" CZDMObjMgr',
            '│  ├─ 2 "South wall" CZDMPlainObject',
            '│  ├─ 3 "T\u00fcr" CZDMPlainObject',
            '│  └─ 5 "\\u001b[31mred\\u202e\\u009b\\r\\n\\u007f" CZDMPlainObject',
            '└─ 4 "Key" CZDMPlainObject'])

    def test_refs_tell_both_directions(self):
        self.assertEqual(self.expect(0, "refs", "sample.zdm", 3).splitlines(), [
            '3 "T\u00fcr" CZDMPlainObject',
            "referred to by",
            '  4 "Key" CZDMPlainObject through relation CZPlainSingleReltn',
            "refers to",
            '  2 "South wall" CZDMPlainObject through relation CZPlainSingleReltn, diffusible'])
        self.assertEqual(read_json("refs", "sample.zdm", 2)["referredToBy"],
                         [{"id": 3, "name": "T\u00fcr", "class": "CZDMPlainObject",
                           "via": "relation", "relation": "CZPlainSingleReltn", "tag": 7,
                           "diffusible": True}])

    def test_show_has_a_line_a_field(self):
        lines = self.expect(0, "show", "sample.zdm", 3).splitlines()
        key = "{5E1F6A4E-9A3B-4F57-8C7D-2B1A0E9F8D6C}"
        self.assertEqual([line for line in lines if not line.startswith(("status", "options", "record"))], [
            "id 3", "class CZDMPlainObject", "owner 1", "type 1", "word1 0", "word2 0", 'name "T\u00fcr"',
            "relations class=CZPlainSingleReltn status=0x40800000 tag=7 targets=2",
            f'data key={key} name="width" type=double value=0.1',
            f'data key={key} name="share" type=float value=0.1',
            f'data key={key} name="count" type=long value=-3',
            f'data key={key} name="open" type=bool value=true',
            f'data key={key} name="note" type=string value="a \\"b\\"\\n\u00e9"'])
        walls = read_json("show", "sample.zdm", 1)
        self.assertEqual((walls["holds"], walls["current"]), ([2, 3, 5], None))

    def test_categories_are_listed_by_id(self):
        self.assertEqual(self.expect(0, "categories", "sample.zdm").splitlines(), [
            'category id=6 number=70 name="Outside" parent=- members=7 visible=true level=4',
            'category id=7 number=80 name="Plaster" parent=6 members=- visible=false level=4'])
        self.assertEqual(read_json("categories", "sample.zdm")[1], {
            "id": 7, "number": 80, "name": "Plaster", "parent": 6, "members": [], "visible": False,
            "level": 4})
        self.expect(0, "delete", "sample.zdm", 1, 6)
        self.assertEqual([(row["id"], row["parent"]) for row in read_json("categories", "sample.zdm")],
                         [(7, None)])

    def test_show_sets_a_category_relation_beside_its_category(self):
        lines = self.expect(0, "show", "sample.zdm", 2).splitlines()
        self.assertEqual(len([line for line in lines if ".values " in line]), 2 * 19)
        for line in ("relations class=CZCategoryReltn status=0x40800000 tag=-1 targets=6",
                     "relations.values field=visible own=true category=true",
                     "relations.values field=flag02 own=false category=-",
                     "relations.values field=level own=9 category=4",
                     'relations.values field=hatchA.pattern own="red brick" category=""',
                     "relations.values field=hatchA.values own=50.0,0.0,1.0 category=50.0,0.0,1.0",
                     "relations.below class=CZCategoryReltn status=0x40800000 tag=-1 targets=7",
                     "relations.below.values field=visible own=false category=false"):
            self.assertIn(line, lines)

    def test_dump_is_the_same_for_a_copy_saved_again(self):
        shutil.copy("sample.zdm", "copy.zdm")
        self.expect(0, "set", "copy.zdm", 4, "name=Key")
        self.assertEqual(contents("copy.zdm"), contents("sample.zdm"))
        dump = self.expect(0, "dump", "sample.zdm")
        self.assertEqual(dump, self.expect(0, "dump", "copy.zdm"))
        self.assertTrue(all(line.split()[0].lstrip("-").isdigit() for line in dump.splitlines()))
        self.assertEqual([each["id"] for each in read_json("dump", "sample.zdm")],
                         [-1, -4, -3, -2, 1, 2, 3, 4, 5, 6, 7])

    def test_nothing_in_a_name_reaches_the_terminal(self):
        for line in ("tree sample.zdm", "show sample.zdm 5", "dump sample.zdm --json",
                     "refs sample.zdm 5", "graph sample.zdm --dot", "graph sample.zdm --json"):
            with self.subTest(line):
                out = self.expect(0, *line.split())
                self.assertIn("\\u202e", out)
                self.assertFalse([c for c in out if c in "\x1b\x7f\x9b\u202e\r"])

    def test_graph_draws_around_an_object(self):
        dot = self.expect(0, "graph", "sample.zdm", 2, "--dot")
        self.assertIn('"3" -> "2" [style=solid]', dot)
        self.assertNotIn("Key", dot)
        self.assertIn('"4" -> "3" [style=dashed]', self.expect(0, "graph", "sample.zdm", "--dot"))

    @unittest.skipUnless(shutil.which("dot") and not IS_WINDOWS, "no dot here")
    def test_graph_is_drawn_by_dot(self):
        svg = self.expect(0, "graph", "sample.zdm")
        self.assertEqual(xml.dom.minidom.parseString(svg).documentElement.tagName, "svg")

    @unittest.skipIf(IS_WINDOWS, "the emulator needs its path")
    def test_graph_falls_back_to_dot_text(self):
        code, out, err = zdm("graph", "sample.zdm", env={"PATH": self.folder})
        self.assertEqual(code, 0)
        self.assertTrue(out.startswith("digraph"))
        self.assertIn("Graphviz", err)

    def test_audit_of_a_sound_document_saves_nothing(self):
        before = contents("sample.zdm")
        self.assertEqual(self.expect(0, "audit", "sample.zdm"), "nothing found\n")
        self.assertEqual(read_json("audit", "sample.zdm", "--repair"),
                         {"sound": True, "repaired": [], "findings": []})
        self.assertEqual(contents("sample.zdm"), before)

    def test_audit_warns_of_references_to_nothing(self):
        self.expect(0, "delete", "sample.zdm", 3)
        out = self.expect(0, "audit", "sample.zdm")
        self.assertEqual(out, "warning reference-to-nothing at object 4, relation to 3\n")
        self.assertEqual(json.loads(self.expect(0, "audit", "--json", "sample.zdm"))["sound"], True)


class Recovering(DocumentTest):
    def test_what_survives_a_damaged_record_is_saved(self):
        sample = contents("sample.zdm")
        at = sample.index("South wall".encode("utf-16-le"))
        with open("damaged.zdm", "wb") as file:
            file.write(sample[:at] + bytes(20) + sample[at + 20:])
        damaged = contents("damaged.zdm")
        self.expect(7, "tree", "damaged.zdm")
        self.assertIn("records 10", self.expect(7, "info", "damaged.zdm"), "what the index says")
        account = json.loads(self.expect(12, "recover", "damaged.zdm", "whole.zdm", "--json"))
        self.assertEqual(account["size"], len(sample))
        fates = {each["id"]: each["fate"] for each in account["objects"]}
        self.assertEqual([fates[id] for id in (1, 3, 4, 5)], ["recovered"] * 4)
        self.assertNotEqual(fates[2], "recovered")
        self.assertEqual(read_json("show", "whole.zdm", 3)["name"], "T\u00fcr")
        self.assertEqual(read_json("show", "whole.zdm", 3)["relations"][0]["targets"], [2])
        self.expect(11, "recover", "damaged.zdm", "whole.zdm")
        self.assertEqual(contents("damaged.zdm"), damaged)

    def test_a_sound_document_comes_out_as_it_is(self):
        out = self.expect(0, "recover", "sample.zdm", "copy.zdm")
        self.assertEqual(out, "10 recovered\n")
        self.assertEqual(contents("copy.zdm"), contents("sample.zdm"))
        with open("text", "wb") as file:
            file.write(b"no document\n" * 99)
        self.expect(5, "recover", "text", "made.zdm")
        self.assertFalse(os.path.exists("made.zdm"))


main()
