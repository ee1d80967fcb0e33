"""Commands that drive, store and follow."""
import contextlib
import json
import os
import signal
import time
import unittest

from tool import DEADLINE, ToolTest


class Acts(ToolTest):
    def levels(self, *arguments):
        """The levels that the library drives, and the result."""
        lines = self.run_tool("trigger", *arguments, "--verbose", "--json").splitlines()
        objects = [json.loads(line) for line in lines]
        return [entry["level"] for entry in objects[:-1]], objects[-1]["result"]

    def test_outputs_are_driven_as_asked(self):
        for arguments, levels, result, left in [
                (["1"], [0, 1], "switched on", "1"),
                (["3"], [1, 0], "switched on", "0"),  # valid at level 0
                (["2", "--inverted"], [1, 0], "switched on", "0"),
                (["4", "--timeout", "100ms"], [0, 1, 0], "done", "0"),
                (["4", "--inverted", "--timeout", "0.1"], [1, 0, 1], "done", "1"),
                (["4", "--mode", "pulse"], [0, 1, 0], "done", "0")]:
            self.assertEqual(self.levels(*arguments), (levels, result), arguments)
            self.assertEqual(self.level(2, int(arguments[0]) - 1), left, arguments)
        levels, _ = self.levels("4", "--mode", "flash", "--frequency", "10", "--timeout", "1s")
        self.assertEqual(levels, [i % 2 for i in range(len(levels))])
        self.assertIn(len(levels), range(7, 13))  # a loaded machine skips changes
        self.assertEqual(self.level(2, 3), "0")
        self.expect_lines(self.run_tool("outputs"), "1 2 0 1 steady 1 active",
                          "3 2 2 0 steady 0 active", "4 siren 2 3 1 steady 0 normal")
        self.assertEqual(self.run_tool("cancel", "3"), "output 3: switched off, its level is 1\n")
        self.run_tool("cancel", "2", "--inverted")
        self.assertIn("output 4: switched on, its level is 1", self.run_tool("trigger", "siren"))
        self.assertEqual([self.level(2, 1), self.level(2, 2)], ["1", "1"])

    def test_an_interrupted_output_is_left_off(self):
        for timeout, number, status in [([], signal.SIGINT, 0),
                                        (["--timeout=1m"], signal.SIGTERM, 1)]:
            process = self.start("trigger", "3", "--mode", "flash", "--verbose", *timeout)
            while "-> 0" not in process.stdout.readline():  # on
                self.assertIsNone(process.poll())
            process.send_signal(number)
            output, errors = process.communicate(timeout=DEADLINE)
            self.assertIn("output 3: cancelled, its level is 1\n", output)
            self.assertEqual((process.returncode, "cut short" in errors), (status, status == 1))
            self.assertEqual(self.level(2, 2), "1")

    def test_a_line_that_cannot_be_driven_is_a_failure(self):
        self.line(2, 0).unlink()
        self.assertIn("group 2, bit 0 cannot be driven: ", self.run_tool("trigger", "1", status=1))
        process = self.start("trigger", "2", "--mode", "flash", "--verbose")
        while "-> 1" not in process.stdout.readline():
            self.assertIsNone(process.poll())
        self.line(2, 1).unlink()  # while it is flashing
        self.assertIn("cannot be driven", process.communicate(timeout=DEADLINE)[1])
        self.assertEqual(process.returncode, 1)

    def test_follow_tells_what_changes(self):
        self.line(0, 3).unlink()
        output, _ = self.start("follow", "--json", "--present", "--count", "4").communicate()
        lost = json.loads(output.splitlines()[3])
        self.assertEqual((lost["input"], lost["state"], lost["cause"]),
                         (4, "unreadable", f"{self.line(0, 3)}: No such file or directory"))
        process = self.start("follow", "--present", "--count", "20")
        present = [process.stdout.readline() for _ in range(16)]
        self.assertRegex(present[2], r"^[\d-]{10} \d\d:\d\d:\d\d\.\d{3}  input 3  normal$")
        self.assertIn(f"  input 4  unreadable  {self.line(0, 3)}: No such file", present[3])
        self.assertIn("warning: group 0, bit 3 cannot be read", process.stderr.readline())
        for level, state in ("1", "alarm"), ("0", "normal"):
            self.line(1, 6).write_text({"alarm": "0", "normal": "1"}[state])
            self.assertRegex(process.stdout.readline(), rf"  input 15  {state}\n$")
        self.line(0, 3).write_text("0\n")  # is back
        self.assertRegex(process.stdout.readline(), "  input 4  normal\n$")
        self.line(0, 3).unlink()
        output, errors = process.communicate(timeout=DEADLINE)
        self.assertRegex(output, "  input 4  unreadable  .*No such file")
        self.assertEqual((process.returncode, "can be read again" in errors), (0, True))

    def follow(self, **options):
        """One that is known to be watching: its first message has been read."""
        process = self.start("monitor", "--json", "--present", **options)  # its old name
        for _ in range(16):
            process.stdout.readline()
        self.line(0, 0).write_text("1")
        message = json.loads(process.stdout.readline())
        self.assertLessEqual(abs(message.pop("received") - message.pop("time")), 2)
        self.assertEqual(message, {"input": 1, "name": "front door", "state": "alarm"})
        return process

    def test_follow_ends_when_it_is_told(self):
        process = self.follow()
        process.send_signal(signal.SIGINT)
        self.assertEqual((process.communicate(timeout=DEADLINE), process.returncode), (("", ""), 0))
        begin = time.monotonic()
        self.assertEqual(self.run_tool("follow", "--timeout", "0.2"), "")  # nothing has changed
        self.assertGreaterEqual(time.monotonic() - begin, 0.2)

    def test_follow_ends_quietly_when_its_reader_goes(self):
        process = self.follow()
        process.stdout.close()
        self.assertEqual((process.wait(DEADLINE), process.stderr.read()), (0, ""))

    @staticmethod
    def blocks(process, number):
        """Whether the process has come to where it takes the signal itself."""
        with open(f"/proc/{process}/status", encoding="ascii") as status:
            [mask] = [line.split()[1] for line in status if line.startswith("SigBlk:")]
        return int(mask, 16) >> (number - 1) & 1

    def start_unread(self, *arguments):
        """With a full pipe as output; the end to read it."""
        read, write = os.pipe()
        os.set_blocking(write, False)
        with contextlib.suppress(BlockingIOError):
            while True:
                os.write(write, b"x" * 4096)
        os.set_blocking(write, True)
        process = self.start(*arguments, stdout=write)
        os.close(write)
        return process, os.fdopen(read, "rb")

    def test_follow_answers_signals_while_its_reader_is_stopped(self):
        process, output = self.start_unread("follow", "--present")
        while not self.blocks(process.pid, signal.SIGTERM):
            self.assertIsNone(process.poll())
        process.send_signal(signal.SIGTERM)
        self.assertEqual(process.wait(DEADLINE), 0)
        output.close()

    def test_a_line_does_not_wait_for_who_reads_of_it(self):
        for end in "read", "signal":
            process, output = self.start_unread("trigger", "4", "--mode", "flash", "--verbose",
                                                "--frequency", "20", "--timeout", "1s")
            begin = time.monotonic()
            while self.level(2, 3) != "1":
                self.assertLess(time.monotonic() - begin, DEADLINE)
            while self.blocks(process.pid, signal.SIGTERM):  # until the line needs it no more
                self.assertLess(time.monotonic() - begin, DEADLINE)
            self.assertEqual((self.level(2, 3), process.poll()), ("0", None))  # it has lines left
            if end == "signal":
                process.terminate()
                self.assertEqual(process.wait(DEADLINE), -signal.SIGTERM)
            else:
                self.assertRegex(output.read(), rb"x\[ .* -> 0\n\[.* -> 1\n(.*\n)+output 4: done, ")
            output.close()

    def test_monitor_parameters_are_stored(self):
        self.expect_lines(self.run_tool("monitors"),
                          "3 yes 3 0 PAL 720x576 8,-4 704x576 0 45")
        self.run_tool("monitors", "set", "3", "--y", "-9", "--brightness", "70", "--enabled",
                      "false")
        self.run_tool("monitors", "set", "5", "--add", "--width", "640")
        found = {entry["id"]: entry for entry in self.run_json("monitors")}
        self.assertEqual(found[3], {
            "id": 3, "enabled": False, "type": 3, "resolutionId": 0, "x": 8, "y": -9, "width": 704,
            "height": 576, "refreshRate": 0, "brightness": 70, "resolution": "PAL 720x576"})
        self.assertEqual((found[5]["width"], found[5]["brightness"]), (640, 50))
        self.edit("NVRAbility.xml", "<NVRAbility>", "")
        self.assertEqual(self.run_json("monitors")[0]["resolution"], "")  # is only a help

    def test_a_sample_board_can_be_written(self):
        new = self.board / "new" / "board"
        self.assertIn(str(new), self.run_tool("board", "init", str(new)))
        self.assertEqual(len(self.run_json("inputs", "--board", str(new))), 16)

    def test_a_board_of_ones_own_agrees_with_itself(self):
        for sizes in (24, 6, 2, 2), (0, 0, 1, 0), (64, 64, 2, 16), (2, 1, 4, 1):
            inputs, outputs, banks, monitors = sizes
            new = str(self.board / "own" / str(sizes))
            self.run_tool("board", "new", new, f"--inputs={inputs}", f"--outputs={outputs}",
                          f"--banks={banks}", f"--monitors={monitors}")
            self.environment["NVRHW_ROOT"] = new
            self.assertEqual(self.run_tool("check", "--strict"), "0 errors, 0 warnings\n", sizes)
            states = self.run_json("inputs") + self.run_json("outputs")
            self.assertEqual([state["id"] for state in states],
                             [*range(1, inputs + 1), *range(1, outputs + 1)])
            self.assertLessEqual({state["state"] for state in states}, {"normal"})
            general = self.run_json("abilities")["general"]
            self.assertEqual((general["alarmInputs"], general["alarmOutputs"],
                              len(self.run_json("info")["banks"]), len(self.run_json("monitors"))),
                             sizes)

    def test_the_line_of_an_input_can_be_flipped(self):
        self.assertEqual(self.run_tool("flip", "yard gate"), "input 2: flipped, its level is 1\n")
        self.assertEqual(self.run_json("flip", "3")["state"], "alarm")  # valid at 0
        self.assertEqual((self.level(0, 1), self.level(0, 2)), ("1", "0"))
        self.line(0, 3).unlink()
        self.assertIn("input 4 cannot be flipped", self.run_tool("flip", "4", status=1))
        self.line(1, 0).parent.rename(self.board / "bank")
        self.line(1, 0).parent.symlink_to("/dev/null")  # no directory: taken for a chip
        self.assertIn("input 9 is a line of a real GPIO chip", self.run_tool("flip", "9", status=1))


if __name__ == "__main__":
    unittest.main()
