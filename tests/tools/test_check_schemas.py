import json
import pathlib
import tempfile
import unittest

import tool

check_schemas = tool.load("check_schemas")


def transcript(*texts):
    """One that expects an event of another kind and these exports."""
    events = [{"event": "flush"}] + [{"event": "export", "text": text} for text in texts]
    trace = "\n".join(json.dumps(event) for event in events)
    return f"# A case.\n-- input --\nOUTPUT EXPORT.\n-- trace --\n{trace}\n"


def specification(inside):
    return f"<exportSpecification>{inside}</exportSpecification>"


GOOD = specification('<global/><contents/><doc documentFile="{DIR}\\a.doc"/>')


class ExpectedExports(unittest.TestCase):
    def complaints(self, *transcripts):
        """By transcript."""
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            tool.write_tree(root, {f"{i}.transcript": text for i, text in enumerate(transcripts)})
            return check_schemas.validate_exports(sorted(root.glob("*.transcript")), root)

    def test_good_ones_are_accepted_and_counted_by_transcript(self):
        self.assertEqual(self.complaints(transcript(GOOD, GOOD), transcript(), transcript(GOOD)), [[], []])

    def test_every_one_that_does_not_fit_is_named_with_its_transcript(self):
        bad = [specification("<contents/>"), specification('<global/><contents/><doc color="1"/>'), "<not", "",
               specification("<global/><contents/><jpg/><doc/>"), specification('<global printOption="3"/><contents/>')]
        for text in bad:
            complaints = self.complaints(transcript(GOOD), transcript(GOOD, text, GOOD))
            self.assertEqual([len(each) for each in complaints], [0, 1], text)
            self.assertIn("1.transcript", complaints[1][0])

    def test_none_at_all_is_a_failure(self):
        with self.assertRaises(SystemExit):
            self.complaints(transcript())


if __name__ == "__main__":
    unittest.main()
