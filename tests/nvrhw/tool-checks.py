"""What `nvrhw check` finds on broken boards, against what the library makes of them.

Each folder of fixtures/check holds what is put over the sample board, a shell script "break" that
is then run in it, and the output that is expected.
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
CLOCK_DEFAULT = re.compile(r".*: no such file: /dev/rtc0 in UTC is taken .*\n")


class Checks(ToolTest):
    def break_board(self, name):
        board = self.board.parent / name
        for folder in (os.environ["NVRHW_SAMPLE_BOARD"], FIXTURES / "base", FIXTURES / name):
            shutil.copytree(folder, board, dirs_exist_ok=True)
        if (board / "break").exists():
            subprocess.run(["sh", "-e", "break"], cwd=board, check=True)
        return board

    @staticmethod
    def check(board, *options):
        run = subprocess.run([*TOOL, "--board", ".", "check", *options], cwd=board, text=True,
                             stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
        return run.returncode, run.stdout

    @staticmethod
    def loads(board):
        """The library starts, all lines and monitor parameters can be used, and it writes no log
        record but that of the clock whose configuration is missing."""
        run = subprocess.run(LOADER, cwd=board / "hd1/program/config", text=True, check=False,
                             env={**os.environ, "NVRHW_ROOT": str(board)},
                             stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        return (run.returncode, CLOCK_DEFAULT.sub("", run.stdout)) == (0, "loaded\n")

    def test_every_fault_is_found_and_errors_are_where_the_library_fails(self):
        boards = [self.break_board(folder.name) for folder in sorted(FIXTURES.iterdir())]
        self.assertGreater(len(boards), 20)
        with concurrent.futures.ThreadPoolExecutor(len(boards)) as pool:  # a failing one waits
            loading = list(pool.map(self.loads, boards))
        for board, loads in zip(boards, loading):
            with self.subTest(board.name):
                expected = (FIXTURES / board.name / "expected").read_text()
                has_errors = ": error: " in expected
                self.assertEqual(self.check(board), (1 if has_errors else 0, expected))
                self.assertEqual(loads, not has_errors)

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
