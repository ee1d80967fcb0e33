"""A board's alarms on their way to an MQTT broker, as the documentation shows it."""
import json
import shutil
import socket
import subprocess
import sys
import unittest

from tool import DEADLINE, ToolTest

PATH = "/usr/sbin:/usr/bin:/bin"
BROKER = shutil.which("mosquitto", path=PATH)


class Publishes(ToolTest):
    def start_other(self, *arguments, **options):
        process = subprocess.Popen(arguments, text=True, **options)
        self.addCleanup(process.communicate)
        self.addCleanup(process.kill)
        return process

    def wait_for(self, broker, text):
        """Until the broker says so; its end instead is a failure."""
        self.assertTrue(any(text in line for line in broker.stderr), text)

    def test_alarms_reach_a_subscriber(self):
        with socket.socket() as free:
            free.bind(("127.0.0.1", 0))
            port = str(free.getsockname()[1])
        broker = self.start_other(BROKER, "-p", port, "-v", stderr=subprocess.PIPE)
        self.wait_for(broker, " running\n")
        to_broker = ["-h", "127.0.0.1", "-p", port, "-t", "recorder/alarms"]
        subscriber = self.start_other("mosquitto_sub", *to_broker, "-C", "18",
                                      stdout=subprocess.PIPE)
        self.wait_for(broker, "Sending SUBACK")
        follow = self.start("follow", "--json", "--present")
        self.start_other("mosquitto_pub", *to_broker, "-l", stdin=follow.stdout)
        for number in range(1, 17):  # it is watching when they have come
            self.assertEqual(json.loads(subscriber.stdout.readline())["input"], number)
        for group, bit, level, number, state in (0, 2, "0", 3, "alarm"), (0, 2, "1", 3, "normal"):
            self.line(group, bit).write_text(level)
            message = json.loads(subscriber.stdout.readline())
            self.assertEqual((message["input"], message["state"]), (number, state))
        self.assertEqual(subscriber.wait(DEADLINE), 0)


if __name__ == "__main__":
    if BROKER is None or shutil.which("mosquitto_pub") is None:
        print("skipped: mosquitto and mosquitto-clients are not installed")
        sys.exit(77)
    unittest.main()
