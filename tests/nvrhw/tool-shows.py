"""What the commands show, and how they fail."""
import fcntl
import json
import os
import pty
import re
import struct
import subprocess
import termios
import unittest

from tool import DEADLINE, TOOL, ToolTest

CONFIG = "hardwareConfig.xml"
ABILITY = "NVRAbility.xml"
WRONG_USAGE = [
    [], ["inptus"], ["info", "--bogus"], ["info", "--board", "/nowhere/at/all"], ["trigger"],
    ["trigger", "1", "--mode", "blink"], ["trigger", "1", "--mode", "2"],
    ["trigger", "1", "--frequency", "2"], ["trigger", "1", "--mode", "flash", "--frequency", "0"],
    ["trigger", "1", "--mode", "flash", "--frequency", "21"],
    ["trigger", "1", "--mode", "pulse", "--timeout", "1s"], ["trigger", "1", "--timeout", "0"],
    ["trigger", "1", "--timeout", "2147484ms"], ["trigger", "1", "--timeout", "1h"],
    ["trigger", "1", "--timeout", "1.2.3s"], ["trigger", "1", "--timeout", "s"],
    ["valid-level", "1", "2"], ["follow", "--count", "0"], ["monitor", "--timeout", "-1"],
    ["monitors", "set", "1"], ["monitors", "set", "1", "--brightness", "bright"], ["board"],
    ["board", "init"], ["board", "new"], ["board", "new", "/proc/x", "--inputs", "-1"],
    ["board", "new", "/proc/x", "--banks", "0"], ["input"], ["flip"],
    ["board", "new", "/proc/x", "--inputs", "64", "--outputs", "65", "--banks", "2"],
]


class Shows(ToolTest):
    def test_wrong_usage_is_status_2_and_says_where_help_is(self):
        before = {path: path.read_bytes() for path in self.board.rglob("*") if path.is_file()}
        for arguments in WRONG_USAGE:
            self.assertIn("--help", self.run_tool(*arguments, status=2))
        self.assertIn("no nvrhw inptus: did you mean inputs?", self.run_tool("inptus", status=2))
        after = {path: path.read_bytes() for path in self.board.rglob("*") if path.is_file()}
        self.assertEqual(before, after)

    def test_what_cannot_be_done_is_status_1_and_says_why(self):
        reference = 'monitorResolutionId="%d"'
        bit = 'bitPosition="%s"'
        for edit, arguments, parts in [
                ((), ["trigger", "9"], ['no output "9"; there are 1, 2, 3, 4 (siren)']),
                ((), ["cancel", "-1"], ['no output "-1"']),
                ((), ["output", "alarm horn"], ['no output "alarm horn"', "4 (siren)"]),
                ((), ["valid-level", "17", "1"], ['no input "17"', "1 (front door), 2 (yard"]),
                ((CONFIG, "yard gate", "front door"), ["flip", "front door"],
                 ['more than one input "front door"; there are 1 (front door), 2 (front door)']),
                ((), ["board", "new", str(self.board)], ["not empty"]),
                ((), ["monitors", "set", "9", "--x", "1"], ["monitor 9", "--add"]),
                ((), ["monitors", "set", "1", "--add"], ["there already", "--add"]),
                ((), ["monitors", "set", "1", "--brightness", "101"], ["monitor 1", "100"]),
                ((), ["board", "init", str(self.board)], ["not empty"]),
                ((), ["board", "init", "/proc/nowhere/x"], ["/proc/nowhere/x"]),
                ((), ["follow", "--count", "1", "--timeout", "50ms"], ["0 of 1"]),
                ((), ["--board", "/dev", "outputs"], ["GPIO device: No such", "dev/gpiodrv", "--board"]),
                ((ABILITY, reference % 3, reference % 9), ["abilities"],
                 ["abilities cannot be read", "nvrhw check"]),
                (("machineinfo.ini", "model =", "model"), ["info"], ["nvrhw check"]),
                (("MonitorParamConfig.xml", "</Monitor>", ""), ["monitors"],
                 ["MonitorParamConfig.xml:", "Monitor"]),
                ((CONFIG, bit % 2, bit % "two"), ["inputs"], [CONFIG + ":13", '"two"', "check"])]:
            if edit:
                self.edit(*edit)
            errors = self.run_tool(*arguments, status=1)
            for part in parts:
                self.assertIn(part, errors, arguments)

    def test_info_shows_all_but_what_is_broken(self):
        self.assertEqual(self.run_json("info")["banks"]["2"],
                         {"kind": "simulated", "chip": None, "label": None, "lines": 4})
        self.line(3, 0).parent.symlink_to("nowhere")
        self.line(4, 0).parent.symlink_to("/dev/null")
        self.line(5, 0).parent.write_text("1")
        self.edit(CONFIG, "<GPIOAlarmOut>", "<GPIOAlarmOutput>")
        self.edit(ABILITY, "<NVRAbility>", "")
        output = self.run_tool("info")
        self.expect_lines(output, "model Thirty-Two Channel Sample", "kernel 6.1.90",
                          "bank 0 simulated, 8 lines",
                          "bank 3 broken link: No such file or directory",
                          "bank 4 kernel chip null: not a bank: it is no GPIO chip",
                          "bank 5 not a bank, which .*",
                          f"unreadable {self.board}/hd1/program/config/{CONFIG}:.*")
        self.expect_lines(output, *self.run_tool("--version").splitlines())

    def test_inputs_are_judged_or_say_why_they_cannot_be_read(self):
        self.line(0, 0).write_text("1\n")
        self.line(0, 2).write_text("0\n")
        self.line(0, 3).unlink()
        self.line(1, 2).write_text("x\x1b[2J\n")
        self.expect_lines(
            self.run_tool("inputs"), "ID NAME BANK BIT VALID USER LEVEL STATE CAUSE",
            "1 front door 0 0 1 0 1 alarm", "2 yard gate 0 1 1 0 0 normal",
            "3 0 2 0 0 0 alarm", "9 1 0 0 0 1 normal",
            f"4 0 3 1 0 - unreadable {self.line(0, 3)}: No such file or directory",
            f'11 1 2 1 0 - unreadable {self.line(1, 2)}: neither 0 nor 1 but "x.*')
        states = {state["id"]: state for state in self.run_json("inputs")}
        self.assertEqual([self.run_json("input", "yard gate"), self.run_json("input", "4")],
                         [states[2], states[4]])
        self.assertEqual(self.run_json("output", "siren"), self.run_json("outputs")[3])
        self.assertEqual(states[3], {"id": 3, "name": "", "bank": 0, "bit": 2, "validLevel": 0,
                                     "level": 0, "userValidLevel": 0, "state": "alarm"})
        self.assertIsNone(states[4]["level"])
        self.assertIn("No such file", states[4]["cause"])

    def test_lines_with_one_id_are_each_shown_as_they_are(self):
        self.edit(CONFIG, 'id="2" group="0" bitPosition="1"', 'id="1" group="0" bitPosition="1"')
        self.line(0, 1).write_text("1\n")
        states = self.run_json("inputs")
        self.assertEqual([(s["id"], s["bit"], s["state"]) for s in states[:2]],
                         [(1, 0, "normal"), (1, 1, "alarm")])

    def test_a_user_valid_level_is_a_trial(self):
        for level, state in ("0", "normal"), ("1", "alarm"):
            found = self.run_json("valid-level", "3", level)
            self.assertEqual((found["state"], found["stored"]), (state, False))
        self.assertIn("nothing is stored", self.run_tool("valid-level", "3", "1"))
        self.assertEqual(self.run_json("valid-level", "3")["userValidLevel"], 0)

    def test_abilities_are_complete(self):
        found = self.run_json("abilities")
        self.assertEqual({key: len(value) for key, value in found.items()},
                         {"general": 10, "resolutions": 9, "monitors": 4, "layouts": 6,
                          "decoding": 6, "network": 2, "web": 3, "fileSystems": 4})
        self.assertEqual(found["decoding"][5]["groups"][1]["windows"], list(range(16, 32)))
        self.edit(ABILITY, '<item winId="3"/>', '<item winId="7"/>')
        self.expect_lines(
            self.run_tool("abilities"), "bit rate 393216 kbit/s", "3 1 NTSC 720x480 720x480",
            "2 1024x768, 1280x1024, 1920x1080", "1 0-2, 7 4K 3840x2160", "5 16-31 D1 704x576",
            "1 4 camera switch yes yes - - yes", "4 ntfs no limit - -")

    def test_texts_that_are_not_for_a_terminal(self):
        [path] = self.board.rglob("machineinfo.ini")
        path.write_bytes(b"[machine]\nmodel = A\x1b[31m\xc2\x9b\xff\n")
        shown = subprocess.check_output([*TOOL, "info"], env=self.environment)
        self.assertIn(b" A?[31m?\xff\n", shown)
        self.assertEqual(self.run_json("info")["machine"]["model"], "A\x1b[31m\x9b\ufffd")

    def test_what_the_library_prints_is_not_among_what_the_tool_prints(self):
        self.environment["NVRHW_PRINT"] = "1"
        output, errors = self.start("abilities", "--json").communicate()
        self.assertEqual(len(json.loads(output)["monitors"]), 4)
        self.assertIn("---MonitorResolution", errors)

    def test_a_terminal_has_colours_if_it_wants_them_and_its_width(self):
        for change, expected in ({}, True), ({"NO_COLOR": "1"}, False), ({"TERM": "dumb"}, False):
            main, terminal = pty.openpty()
            fcntl.ioctl(terminal, termios.TIOCSWINSZ, struct.pack("4H", 24, 40, 0, 0))
            subprocess.run([*TOOL, "info"], env={**self.environment, **change}, stdout=terminal,
                           check=True)
            os.close(terminal)
            shown = os.read(main, 65536).decode()
            os.close(main)
            self.assertEqual("\x1b[1m" in shown, expected, change)
            bare = re.sub("\x1b[^m]*m", "", shown).splitlines()  # the board's path is longer
            self.assertEqual((max(map(len, bare)), "\u2026" in shown), (40, True))

    def test_a_full_disk_is_an_error(self):
        for arguments in ["inputs"], ["--help"]:
            with open("/dev/full", "w", encoding="ascii") as full:
                process = self.start(*arguments, stdout=full)
            self.assertEqual(process.wait(DEADLINE), 1)
            self.assertIn("No space left", process.stderr.read())

    def test_completion_knows_what_the_parser_knows(self):
        script = self.board / "completion"
        script.write_text(self.run_tool("generate", "bash"))
        for words, expected in [
                ("val", "valid-level"), ("monitors s", "set"), ("board ", "init new"),
                ("trigger 1 --mo", "--mode"), ("output ", "1 2 3 4"),
                ("trigger --mode f", "flash"), ("trigger --mode flash ", "1 2 3 4"),
                ("valid-level 1 ", "0 1"), ("monitors set ", "0 1 2 3"),
                ("board init /dev/s", "/dev/shm"), ("trigger --timeout ", ""),
                (f"--board {self.board} valid-level 1", "1 10 11 12 13 14 15 16")]:
            words = ["nvrhw", *words.split(" ")]
            done = subprocess.run(
                ["bash", "-c", f'nvrhw() {{ {" ".join(TOOL)} "$@"; }}; source {script}; '
                 'COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _nvrhw; echo "${COMPREPLY[*]}"',
                 "bash", *words], env=self.environment, text=True, capture_output=True, check=True)
            self.assertEqual((done.stdout.strip(), done.stderr), (expected, ""), words)


if __name__ == "__main__":
    unittest.main()
