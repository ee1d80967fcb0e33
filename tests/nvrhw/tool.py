"""The built program on a copy of the sample board."""
import json
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import tempfile
import unittest

TOOL = shlex.split(os.environ["NVRHW_TOOL"])
DEADLINE = 20  # seconds, for what takes a moment


class ToolTest(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        folder = tempfile.mkdtemp(prefix="nvrhw-")
        self.addCleanup(shutil.rmtree, folder)
        self.board = pathlib.Path(folder) / "board"
        shutil.copytree(os.environ["NVRHW_SAMPLE_BOARD"], self.board)
        self.environment = {**os.environ, "NVRHW_ROOT": str(self.board), "TERM": "xterm"}
        self.environment.pop("NO_COLOR", None)

    def line(self, group, bit):
        return self.board / "dev/gpiodrv" / str(group) / str(bit)

    def level(self, group, bit):
        return self.line(group, bit).read_text().strip()

    def edit(self, name, old, new):
        """Replaces the first `old` in the one file of the board with this name."""
        [path] = self.board.rglob(name)
        text = path.read_text()
        self.assertIn(old, text)
        path.write_text(text.replace(old, new, 1))

    def start(self, *arguments, **options):
        process = subprocess.Popen([*TOOL, *arguments], env=self.environment, text=True,
                                   stdin=subprocess.DEVNULL, stderr=subprocess.PIPE,
                                   **{"stdout": subprocess.PIPE, **options})
        self.addCleanup(process.communicate)
        self.addCleanup(process.kill)
        return process

    def run_tool(self, *arguments, status=0):
        """What it prints. A failure has to say one line that names the program, success none."""
        process = self.start(*arguments)
        output, errors = process.communicate(timeout=DEADLINE)
        self.assertEqual(process.returncode, status, (arguments, output, errors))
        self.assertRegex(errors, r"\Anvrhw: [^\n]+\n\Z" if status else r"\A\Z", arguments)
        return errors if status else output

    def run_json(self, *arguments):
        return json.loads(self.run_tool(*arguments, "--json"))

    def expect_lines(self, output, *patterns):
        """Each pattern, in which a blank stands for any number of them, is a whole line."""
        for pattern in patterns:
            self.assertRegex(output, r"(?m)^ *" + re.sub(" +", " +", pattern) + "$")
