"""`veltrane`: documents that cannot be read, that come by standard input, or for which there is no plug-in."""
import os
import unittest

from host_command import AGE, X, HostTest, document, field_ref, model_document

LINE = document([AGE], field_ref("Out", "Age"))
REGRESSION = ('<RegressionModel functionName="regression"><MiningSchema><MiningField name="x"/>'
              '<MiningField name="y" usageType="target"/></MiningSchema><RegressionTable intercept="1">'
              '<NumericPredictor name="x" coefficient="2"/></RegressionTable>{}</RegressionModel>')
VERIFICATION = ('<ModelVerification recordCount="1" fieldCount="2"><VerificationFields>'
                '<VerificationField field="x" column="x"/><VerificationField field="y" column="y"/></VerificationFields>'
                "<InlineTable><row><x>3</x><y>7</y></row></InlineTable></ModelVerification>")
UNREAD = "error 260105: Unexpected error in opening PMML file."


class DocumentTest(HostTest):
    """Every command takes a document in the same way."""

    COMMANDS = (("transform", "cases.csv"), ("score", "cases.csv"), ("verify",), ("inspect",))

    def setUp(self):
        super().setUp()
        self.write("cases.csv", "Age,x\n1,3\n")

    def run_command(self, command, name, **more):
        return self.run_host(command[0], name, *command[1:], **more)


class Complaints(DocumentTest):
    def everywhere(self, content, explanation, told=UNREAD):
        self.write("d.pmml", content)
        for command in self.COMMANDS:
            with self.subTest(command[0]):
                self.expect(self.run_command(command, "d.pmml"), 1, "", f"veltrane: {told}\nveltrane: {explanation}\n")


class Unreadable(Complaints):
    def not_opened(self, name, reason):
        told = {"score": f"error 260104: Unexpected error in opening PMML file: '{name}'.",
                "transform": f"error 260103: Could not open file: '{name}'."}
        told |= {"verify": told["score"], "inspect": told["transform"]}
        for command in self.COMMANDS:
            with self.subTest(command[0]):
                self.expect(self.run_command(command, name), 1, "",
                            f"veltrane: {told[command[0]]}\nveltrane: {name}: {reason}\n")

    def test_no_such_file(self):
        self.not_opened("none.pmml", "No such file or directory")

    def test_a_folder(self):
        (self.folder / "folder").mkdir()
        self.not_opened("folder", "Is a directory")

    def test_a_name_that_is_no_utf_8(self):
        (self.folder / os.fsdecode(b"d\xff.pmml")).write_text(LINE)
        self.expect(self.run_host("transform", b"d\xff.pmml".decode(errors="surrogateescape"), "cases.csv"), 0,
                    "Out\n1\n")

    def test_an_empty_file(self):
        self.everywhere("", "d.pmml: the file is empty")

    def test_a_file_of_white_space(self):
        self.everywhere("\n \t\n", "d.pmml: the file holds nothing but white space")

    def test_a_file_that_is_no_xml(self):
        self.everywhere("Age\n1\n", 'd.pmml: the file is no XML: it starts with "Age\\n1\\n"')
        self.everywhere(b"\x89PNG\r\n\x1a\n" + b"x" * 50,
                        'd.pmml: the file is no XML: it starts with "\\x89PNG\\r\\n\\x1A\\nxxxxxxxxxxxx..."')

    def test_a_document_that_is_not_well_formed(self):
        self.everywhere("<PMML>\n<Header>\n  </PMML>", "d.pmml:3:5: expected end of tag 'Header'")
        self.everywhere("<PMML>\n<A b='1' b='2'/></PMML>",
                        "d.pmml:2:12: attribute 'b' is already specified for element 'A'")
        self.everywhere(LINE[:-7], f"d.pmml:2:{len(LINE.splitlines()[1]) - 6}: "
                                    "input ended before all started tags were ended; last tag started is 'PMML'")
        self.everywhere("<PMML>&none;</PMML>", "d.pmml:1:13: entity 'none' not found")

    def test_a_document_with_bytes_that_its_encoding_lacks(self):
        filler = "<a>é</a>\n" * 100_000
        self.everywhere(("<PMML>\n" + filler + "<b>é ").encode() + b"\xC4/",
                        "d.pmml:100002:6: invalid byte '/' at position 2 of a 2-byte sequence; the byte \\xC4 here is no "
                        "UTF-8, as which the document is read")

    def test_whatever_the_parser_says_of_such_bytes_their_place_is_told(self):
        """In each text of the parser, and behind lines that end in any way; a mark at the front takes no column."""
        for bad, words in ((b"\xFC", "exceeded byte limit at byte '\ufffd' in a 6-byte sequence"),
                           (b"\xE4x", "invalid byte 'x' at position 2 of a 3-byte sequence"),
                           (b"\xE2\x82x", "invalid byte 'x' at position 3 of a 3-byte sequence"),
                           (b"\xED\xA0\x80", "i"), (b"\xF5\x80\x80\x80", "invalid multi-byte sequence")):
            with self.subTest(bad):
                self.write("d.pmml", b"<PMML>\r\n\r<!-- x -->\n\n" + b"<a>" + bad + b"</a></PMML>")
                told = self.run_host("inspect", "d.pmml").stderr.decode().splitlines()[1]
                self.assertTrue(told.startswith("veltrane: d.pmml:5:4: " + words), told)
                self.assertTrue(told.endswith(f"; the byte \\x{bad[0]:02X} here is no UTF-8, as which the document is read"),
                                told)
        for front, column in ((b"\xEF\xBB\xBF", 4), (b"<?xml version='1.0' encoding='utf-8'?>", 42),
                              (b"<?xml version='1.0'?>", 25)):
            self.write("d.pmml", front + b"<a>\xFC</a><!-- the parser sees the whole sequence -->")
            self.assertIn(b"d.pmml:1:%d: exceeded byte limit " % column, self.run_host("inspect", "d.pmml").stderr)

    def test_bytes_of_another_encoding_are_told_by_the_parser_alone(self):
        self.write("d.pmml", b"<?xml version='1.0' encoding='Shift_JIS'?><a>\x81 </a>")
        self.assertNotIn(b"UTF-8", self.run_host("inspect", "d.pmml").stderr)
        self.write("d.pmml", "<a>ü".encode("utf-16") + b"\xD8\xD8\xD8\xD8")
        self.assertNotIn(b"UTF-8", self.run_host("inspect", "d.pmml").stderr)

    def test_a_document_in_an_unknown_encoding(self):
        self.everywhere(LINE.replace("UTF-8", "none"),
                        "d.pmml:1:38: unable to create converter for 'NONE' encoding")

    def test_utf_16_is_xml(self):
        self.write("d.pmml", LINE.replace("UTF-8", "UTF-16").encode("utf-16"))
        self.expect(self.run_host("transform", "d.pmml", "cases.csv", "--quiet"), 0, "Out\n1\n", "")
        self.everywhere("<PMML>".encode("utf-16"), "d.pmml:1:7: input ended before all started tags were ended; "
                                                   "last tag started is 'PMML'")


class ForeignFunctions(DocumentTest):
    """Functions that PMML hasn't."""

    def derived(self, function, arguments=3):
        return ('<DerivedField name="d" optype="continuous" dataType="double">'
                f'<Apply function="{function}"><FieldRef field="x"/>{"<Constant>1</Constant>" * (arguments - 1)}</Apply>'
                "</DerivedField>")

    def told(self, function):
        return f"veltrane: error 260153: Invalid value: '{function}' of attribute 'function' in 'Apply'.\n"

    def hint(self, function):
        return (f'veltrane: d.pmml: PMML has no function "{function}", but the library alone does: "veltrane transform '
                '--plain" computes it\n')

    def test_one_that_the_library_alone_has_is_told_with_the_road_to_it(self):
        for function, arguments in (("cdf.normal", 3), ("lg10", 1)):
            self.write("d.pmml", document([X], self.derived(function, arguments)))
            for command in (("transform", "cases.csv"), ("inspect",)):
                self.expect(self.run_command(command, "d.pmml"), 1, "", self.told(function) + self.hint(function))
            self.expect(self.run_host("transform", "d.pmml", "cases.csv", "--plain", "--quiet"), 0, err="")
            self.expect(self.run_host("inspect", "d.pmml", "--plain"), 0, err="")

    def test_so_it_is_in_a_model(self):
        local = f'<LocalTransformations>{self.derived("cdf.normal")}</LocalTransformations><RegressionTable '
        self.write("d.pmml", model_document(REGRESSION.format("").replace("<RegressionTable ", local)))
        for command in (("score", "cases.csv"), ("verify",), ("inspect",)):
            self.expect(self.run_command(command, "d.pmml"), 1, err=self.told("cdf.normal") + self.hint("cdf.normal"))

    def test_no_road_is_told_for_the_function_of_an_aggregate(self):
        self.write("d.pmml", document([X], '<DerivedField name="d" optype="continuous" dataType="double">'
                                           '<Aggregate field="x" function="mean"/></DerivedField>'))
        self.expect(self.run_host("transform", "d.pmml", "cases.csv"), 1, "",
                    "veltrane: error 260153: Invalid value: 'mean' of attribute 'function' in 'Aggregate'.\n")

    def test_one_that_nobody_has_is_told_alone(self):
        self.write("d.pmml", document([X], self.derived("cdf.none")))
        for command in (("transform", "cases.csv"), ("inspect",)):
            self.expect(self.run_command(command, "d.pmml"), 1, "", self.told("cdf.none"))


class BeyondTheBounds(Complaints):
    def test_a_document_that_is_nested_too_deeply(self):
        self.everywhere("<PMML>" + "<a>" * 1100, "d.pmml:1:3307: elements are nested too deeply")

    def test_entities_that_multiply(self):
        entities = "<!DOCTYPE PMML [<!ENTITY a 'x'>" + "".join(
            f"<!ENTITY {name} '{f'&{before};' * 10}'>" for before, name in zip("abcdef", "bcdefg")) + "]>"
        self.write("d.pmml", entities + "<PMML>&g;</PMML>")
        for command in self.COMMANDS:
            result = self.run_command(command, "d.pmml")
            self.assertRegex(result.stderr.decode(), r"\Aveltrane: error 260105: .*\nveltrane: d.pmml:1:\d+: parser has "
                                                     r"encountered more than '5000' entity expansions.*\n\Z")

    def test_an_entity_with_a_long_text(self):
        self.everywhere(f"<!DOCTYPE PMML [<!ENTITY a '{'x' * 5000}'>]><PMML>&a;</PMML>",
                        "d.pmml:1:5031: an entity is declared with too long a text")

    def test_too_many_names(self):
        names = "".join(f"<n{number}/>" for number in range(20_001))
        self.write("d.pmml", f"<PMML>{names}</PMML>")
        result = self.run_host("score", "d.pmml", "cases.csv")
        self.assertRegex(result.stderr.decode(), r"d.pmml:1:\d+: the document has too many different names of elements and "
                                                 r"attributes\n\Z")

    def test_nothing_but_the_document_is_read(self):
        self.write("secret", "stolen")
        self.everywhere("<!DOCTYPE PMML [<!ENTITY e SYSTEM 'secret'>]><PMML>&e;</PMML>",
                        'd.pmml:1:55: the document reaches for "secret", which is another file')


class StandardInput(DocumentTest):
    def test_every_command_takes_a_document_from_standard_input(self):
        model = model_document(REGRESSION.format(VERIFICATION)).encode()
        self.expect(self.run_host("transform", "-", "cases.csv", "--quiet", input=LINE.encode()), 0, "Out\n1\n", "")
        self.expect(self.run_host("score", "-", "cases.csv", "--quiet", input=model), 0, "y\n7\n", "")
        self.expect(self.run_host("inspect", "-", input=LINE.encode()), 0, err="")
        self.expect(self.run_host("inspect", "-", input=b"<kord-ml><dictionary><variable name='v' storage-type='STRING' "
                                                        b"measurement-level='ORDINAL'/></dictionary></kord-ml>"), 0, err="")
        self.expect(self.run_host("verify", "-", input=model), 0, err="")
        self.expect(self.run_host("verify", "/dev/stdin", input=model), 0, err="")

    def test_failures_name_it_as_it_was_given(self):
        for command in self.COMMANDS:
            self.expect(self.run_command(command, "-", input=b""), 1, "",
                        f"veltrane: {UNREAD}\nveltrane: -: the file is empty\n")


class Kinds(DocumentTest):
    """There is no plug-in, or one that cannot be used."""

    def setUp(self):
        super().setUp()
        self.write("models.txt", "TreeModel ScriptedModel\n")

    def fails(self, content, *lines, models="models.txt"):
        self.write("d.pmml", content)
        for command in (("score", "d.pmml", "cases.csv"), ("verify", "d.pmml")):
            self.expect(self.run_with_test_plugins(*command, "--models", models), 1, "",
                        "".join(f"veltrane: {line}\n" for line in lines))

    def test_a_kind_without_a_plug_in_is_named_with_those_that_have_one(self):
        self.fails(model_document("<Scorecard/>"), "error 260301: Unsupported model: ''.",
                   'd.pmml: the document\'s model is a "Scorecard"; there are plug-ins for TreeModel, ScriptedModel '
                   "(by models.txt)")
        self.fails(model_document("<Scorecard/>", "<TextModel/>", "<Scorecard/>"), "error 260301: Unsupported model: ''.",
                   'd.pmml: the document\'s model is of the kinds "Scorecard", "TextModel"; there are plug-ins for '
                   "TreeModel, ScriptedModel (by models.txt)")

    def test_so_is_one_that_holds_models_of_another_kind(self):
        self.fails(model_document("<MiningModel><Segmentation><Segment><TreeModel/></Segment></Segmentation></MiningModel>"),
                   "error 260301: Unsupported model: 'TreeModel'.",
                   'd.pmml: the document\'s model is a "MiningModel"; there are plug-ins for TreeModel, ScriptedModel '
                   "(by models.txt)")

    def test_a_document_without_a_model(self):
        self.fails(model_document(), "error 260301: Unsupported model: ''.", "d.pmml: the document holds no model")
        self.fails(LINE, "error 260301: Unsupported model: ''.",
                   'd.pmml: the document holds no model; its derived fields are computed by "veltrane transform"')

    def test_another_root(self):
        self.fails("<html/>", "error 260301: Unsupported model: 'html'.",
                   'd.pmml: the root element is "html", not PMML')
        self.fails('<p:PMML xmlns:p="a"/>', "error 260301: Unsupported model: 'p:PMML'.",
                   'd.pmml: the root element is "p:PMML", and names with a prefix are not read, not PMML')

    def test_derived_fields_of_a_document_that_has_a_model_only(self):
        self.write("d.pmml", model_document(REGRESSION.format("")))
        self.expect(self.run_host("transform", "d.pmml", "cases.csv"), 1, "",
                    "veltrane: error 260114: Missing node: 'TransformationDictionary'.\n"
                    'veltrane: d.pmml: the document has no derived fields outside of its model; "veltrane score" scores '
                    "that\n")

    def test_a_document_with_neither_derived_fields_nor_a_model(self):
        self.write("d.pmml", model_document())
        for command in (("transform", "d.pmml", "cases.csv"), ("inspect", "d.pmml")):
            self.expect(self.run_host(*command), 1, "",
                        "veltrane: error 260114: Missing node: 'TransformationDictionary'.\n"
                        "veltrane: d.pmml: the document has no derived fields, and no model either\n")

    def test_a_file_that_is_no_list_is_not_told_whole(self):
        self.write("no-list.txt", "\x1b[2J," + "x" * 100 + "".join(f",name{number}" for number in range(1000)))
        names = "\\x1B[2J, " + "x" * 60 + "..., " + ", ".join(f"name{number}" for number in range(18)) + ", ..."
        self.fails(model_document("<TreeModel/>"), "error 260301: Unsupported model: ''.",
                   f'd.pmml: the document\'s model is a "TreeModel"; there are plug-ins for {names} (by no-list.txt)',
                   models="no-list.txt")

    def test_an_empty_list(self):
        self.write("empty.txt", "")
        self.fails(model_document("<TreeModel/>"), "error 260301: Unsupported model: ''.",
                   'd.pmml: the document\'s model is a "TreeModel"; there are plug-ins for none (by empty.txt)',
                   models="empty.txt")

    def test_a_list_that_cannot_be_read(self):
        (self.folder / "folder").mkdir()
        self.write("d.pmml", model_document("<TreeModel/>"))
        for name, reason in (("no.txt", "No such file or directory"), ("folder", "Is a directory")):
            for command in (["score", "d.pmml", "cases.csv"], ["inspect", "d.pmml"], ["verify", "d.pmml"]):
                self.expect(self.run_host(*command, "--models", name), 1, "",
                            f"veltrane: error 260103: Could not open file: '{name}'.\nveltrane: {name}: {reason}\n")

    def test_a_plug_in_that_is_not_there(self):
        self.write("models.txt", "AbsentModel\n")
        self.fails(model_document("<AbsentModel/>"), "error 260113: Missing model dll of 'AbsentModel'.",
                   "the plug-in cannot be used: AbsentModel900r.so: cannot open shared object file: No such file or "
                   "directory")

    def test_a_plug_in_that_the_loader_refuses(self):
        self.write("models.txt", "BrokenModel\n")
        self.write("BrokenModel900r.so", b"no library")
        self.write("d.pmml", model_document("<BrokenModel/>"))
        environment = dict(os.environ, LD_LIBRARY_PATH=str(self.folder))
        result = self.run_host("score", "d.pmml", "cases.csv", "--models", "models.txt", env=environment)
        self.expect(result, 1, "", "veltrane: error 260113: Missing model dll of 'BrokenModel'.\n"
                                   f"veltrane: the plug-in cannot be used: {self.folder}/BrokenModel900r.so: "
                                   "file too short\n")

    def test_a_plug_in_without_an_entry(self):
        self.write("models.txt", "NoEntryModel\n")
        self.fails(model_document("<NoEntryModel/>"), "error 260113: Missing model dll of 'NoEntryModel'.",
                   "the plug-in cannot be used: " + os.environ["VELTRANE_TEST_PLUGINS"] + "/NoEntryModel900r.so: undefined "
                   "symbol: GiveMyTranslator")

    def test_a_plug_in_without_a_translator(self):
        self.write("models.txt", "NullTranslatorModel\n")
        self.fails(model_document("<NullTranslatorModel/>"), "error 260113: Missing model dll of 'NullTranslatorModel'.",
                   "the plug-in cannot be used: it gives no translator")

    def test_plug_ins_that_roots_and_the_nearest_neighbours_ask_for(self):
        self.write("models.txt", "OtherModel\n")
        for content, name in (("<Tree/>", "TreeModel"), ("<kord-ml><regression-model/></kord-ml>", "GeneralRegressionModel"),
                              (model_document("<NearestNeighborModel/>"), "NearestNeighborModel")):
            result = self.run_host("score", self.write("d.pmml", content), "cases.csv", "--models", "models.txt")
            self.assertEqual(result.returncode, 1)
            self.assertIn(b"veltrane: ", result.stderr)

    def test_a_list_of_another_system(self):
        self.write("models.txt", "\ufeffTextModel\r\n\r\nRegressionModel, TreeModel\r\nOther\rMore")
        self.write("d.pmml", model_document(REGRESSION.format("")))
        self.expect(self.run_host("score", "d.pmml", "cases.csv", "--models", "models.txt", "--quiet"), 0, "y\n7\n", "")
        self.fails(model_document("<Scorecard/>"), "error 260301: Unsupported model: ''.",
                   'd.pmml: the document\'s model is a "Scorecard"; there are plug-ins for TextModel, RegressionModel, '
                   "TreeModel, Other, More (by models.txt)")


if __name__ == "__main__":
    unittest.main()
