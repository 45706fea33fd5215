"""Holds the file of Japanese texts against the sources, and each translation against its source.

usage: test_translation_file.py <repository>
"""
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree

REPOSITORY = pathlib.Path(sys.argv.pop(1))
FILE = REPOSITORY / "src/resources/Morvenkite_ja_JP.ts"

# What a translation must carry over, as often as its source has it.
KEPT = {
    "place holders": re.compile(r"%(?:n|L?\d+)"),
    "file patterns": re.compile(r"\([^)]*\*[^)]*\)"),
    "units": re.compile(r"\[(?:eV|ms|%)\]"),
    "line ends and tabs": re.compile(r"[\n\t]"),
    "tags": re.compile(r"</?\w+[^>]*>"),
    "blanks at the start": re.compile(r"^\s+"),
    "end": re.compile(r"(?::?\s*|\.\.\.|…)$"),
}
MNEMONIC = re.compile(r"&(\w)")
# The same in every language: numbers, marks and units alone.
NO_TEXT = re.compile(r"[^A-Za-z]*|\[?(?:eV|keV|deg|ms)\]?")
# A literal with letters in a call that sets a caption, which tr() would have hidden from this.
PLAIN_CAPTION = re.compile(
    r"\b(?:set(?:\w*Text|\w*Title|\w*Tip|Caption|NameFilters?|\w*Label|Prefix|Suffix)"
    r"|add(?:Tab|Action|Menu|Items?)|showMessage|new Q(?:Label|Action|Menu|\w*Button|\w*Box))\("
    r'[^;]*?Q(?:StringLiteral|Latin1String)\("[^"]*?\b(?!k?eV\b|deg\b|ms\b)[A-Za-z]{2}')


def messages(path):
    """Source, translation and state of each text, by context, source and comment."""
    found = {}
    for context in xml.etree.ElementTree.parse(path).getroot().iter("context"):
        for message in context.iter("message"):
            translation = message.find("translation")
            key = (context.findtext("name"), message.findtext("source"),
                   message.findtext("comment") or "")
            text = translation.findtext("numerusform") or translation.text or ""
            found[key] = (text, translation.get("type"))
    return found


class TranslationFile(unittest.TestCase):
    """The committed file, beside one that is brought up to date."""

    @classmethod
    def setUpClass(cls):
        cls.texts = messages(FILE)
        with tempfile.TemporaryDirectory() as folder:
            copy = pathlib.Path(folder) / FILE.name
            shutil.copy(FILE, copy)
            cls.update = subprocess.run(
                [REPOSITORY / "tools/update_translation.sh", copy],
                capture_output=True, text=True, check=True)
            cls.updated = messages(copy)

    def none_of(self, faults, advice):
        faults = [f"  {fault}" for fault in faults]
        if faults:
            self.fail("\n".join([advice, *faults]))

    def test_every_text_of_the_sources_is_in_the_file(self):
        self.none_of(self.updated.keys() - self.texts.keys(),
                     "not translated, run tools/update_translation.sh:")
        self.none_of(self.texts.keys() - self.updated.keys(),
                     "no longer in the sources, run tools/update_translation.sh:")
        # Their texts would be looked up under another class than they are filed under.
        self.none_of((line for line in self.update.stderr.splitlines() if "Q_OBJECT" in line),
                     "tr() in a class without Q_OBJECT:")

    def test_every_translation_is_finished(self):
        self.none_of((key for key, (text, state) in self.texts.items()
                      if state is not None or not text.strip()), "unfinished:")

    def test_translations_keep_what_the_program_and_the_layout_need(self):
        for what, pattern in KEPT.items():
            self.none_of(
                (f"{key} -> {text!r}" for key, (text, _) in self.texts.items()
                 if sorted(pattern.findall(key[1])) != sorted(pattern.findall(text))),
                f"{what} differ:")

    def test_mnemonics_stand_behind_the_text(self):
        for (context, source, _), (text, _) in self.texts.items():
            with self.subTest(f"{context}: {source}"):
                letters = MNEMONIC.findall(source)
                self.assertEqual(MNEMONIC.findall(text), letters)
                for letter in letters:
                    self.assertIn(f"(&{letter})", text)

    def test_what_is_no_text_is_not_in_the_file(self):
        self.none_of((key for key in self.texts if NO_TEXT.fullmatch(key[1])),
                     'mark as <string notr="true">, or leave out tr():')

    def test_captions_set_in_code_are_translatable(self):
        faults = []
        for path in sorted((REPOSITORY / "src").rglob("*.cpp")):
            code = path.read_text(encoding="utf-8")
            faults += [f"{path}:{code.count(chr(10), 0, match.end()) + 1}: {match[0][-60:]!r}"
                       for match in PLAIN_CAPTION.finditer(code)]
        self.none_of(faults, "a caption without tr():")


if __name__ == "__main__":
    unittest.main()
