"""What `nvrhw check` finds on broken boards, against what the library makes of them.

The files of fixtures/check hold cases. A case begins with "=== NAME" and is put over the sample
board and the case "base": "--- FILE" begins the content of the board's file of that name; lines
with "$ " are then run by a shell in the board; lines with "> " are the findings that are expected,
without the folder of a document. A NAME with a "!" is an error that the library does not see. What is
wrong with lines that have a device, in the case "lines-wrong", is no error of a document.
"""
import concurrent.futures
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import unittest

from tool import TOOL, ToolTest

LOADER = shlex.split(os.environ["NVRHW_LOADER"])
FIXTURES = pathlib.Path(__file__).parents[1] / "fixtures/check"
CLOCK_DEFAULT = re.compile(r".*: no such file, nor .*: /dev/rtc0 in UTC is taken .*\n")
FOLDER = re.compile(r"^\./(hd1|mnt)/\S*/", re.MULTILINE)


def read_cases():
    text = "".join(path.read_text() for path in sorted(FIXTURES.iterdir()))
    return dict(re.findall(r"^=== (\S+)\n(.*?)(?=^===|\Z)", text, re.MULTILINE | re.DOTALL))


class Checks(ToolTest):
    cases = read_cases()

    def break_board(self, name):
        board = self.board.parent / name
        shutil.copytree(os.environ["NVRHW_SAMPLE_BOARD"], board)
        for case in (self.cases["base"], self.cases[name]):
            files = r"^--- (\S+)\n(.*?)(?=^---|^\$ |^> |\Z)"
            for file, content in re.findall(files, case, re.MULTILINE | re.DOTALL):
                [path] = board.rglob(file)
                path.write_text(content)
            script = "\n".join(re.findall(r"^\$ (.*)", case, re.MULTILINE))
            subprocess.run(["sh", "-ec", script], cwd=board, check=True)
        return board

    @staticmethod
    def check(board, *options):
        run = subprocess.run([*TOOL, "--board", ".", "check", *options], cwd=board, text=True,
                             stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
        return run.returncode, FOLDER.sub("", run.stdout)

    @staticmethod
    def loads(board):
        """Whether the library starts, all lines and monitor parameters can be used, and it writes no
        log record but that of the clock whose configuration is missing; and the documents' errors."""
        run = subprocess.run(LOADER, cwd=board / "hd1/program/config", text=True, check=False,
                             env={**os.environ, "NVRHW_ROOT": str(board)},
                             stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        errors = re.findall(r"^> .*\n", run.stdout, re.MULTILINE)
        output = CLOCK_DEFAULT.sub("", run.stdout[len("".join(errors)):])
        told = FOLDER.sub("", "".join(error[2:].replace(str(board), ".") for error in errors))
        return (run.returncode, output) == (0, "loaded\n"), told

    def test_every_fault_is_found_and_errors_are_where_the_library_fails(self):
        boards = {name: self.break_board(name) for name in self.cases}
        self.assertGreater(len(boards), 40)
        with concurrent.futures.ThreadPoolExecutor(len(boards)) as pool:  # a failing one waits
            loading = dict(zip(boards, pool.map(self.loads, boards.values())))
        for name, board in boards.items():
            with self.subTest(name):
                findings = re.findall(r"^> (.*\n)", self.cases[name], re.MULTILINE)
                errors = sum(": error: " in finding for finding in findings)
                counts = [f"{count} {kind}" + ("s" if count != 1 else "") for count, kind in
                          ((errors, "error"), (len(findings) - errors, "warning"))]
                expected = "".join(findings) + ", ".join(counts) + "\n"
                self.assertEqual(self.check(board), (1 if errors else 0, expected))
                told = [finding.replace(": error: ", ": ") for finding in findings
                        if ": error: " in finding and name != "lines-wrong"]
                self.assertEqual(loading[name], (not errors or "!" in name, "".join(told)))

    def test_json_and_strictness(self):
        self.assertEqual(self.check(self.board, "--strict"), (0, "0 errors, 0 warnings\n"))
        status, output = self.check(self.break_board("monitors-missing"), "--strict", "--json")
        self.assertEqual(status, 1)
        self.assertEqual(output, """[
  {
    "file": "./mnt/mtd/code/config_file/MonitorParamConfig.xml",
    "line": null,
    "severity": "warning",
    "subject": "monitor parameters",
    "cause": "no such file: no monitor has parameters until some are set"
  }
]
""")


if __name__ == "__main__":
    unittest.main()
