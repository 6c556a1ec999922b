"""Small trees for the tests of the lint rules."""

import shutil
import tempfile
import unittest
from pathlib import Path

import lint


class LintTest(unittest.TestCase):
    def setUp(self):
        self.root = Path(tempfile.mkdtemp(prefix="carnetel-lint-"))
        self.addCleanup(shutil.rmtree, self.root)
        self.write(".clang-format", (lint.ROOT / ".clang-format").read_text(encoding="utf-8"))

    def write(self, path, text):
        target = self.root / path
        target.parent.mkdir(parents=True, exist_ok=True)
        target.write_text(text, encoding="utf-8")

    def assert_accepts(self, check):
        self.assertEqual(check(self.root), [])

    def assert_rejects(self, check, *texts):
        """`check` has one complaint for each of `texts`, in order, which holds that text."""
        complaints = check(self.root)
        self.assertEqual(len(complaints), len(texts), complaints)
        for complaint, text in zip(complaints, texts):
            self.assertIn(text, complaint)
