#!/usr/bin/env python3
"""Prints CHANGELOG.md in the form of Debian's changelogs; what is unreleased goes to the newest version.

changelog.py CHANGELOG.md MAINTAINER
"""

import datetime
import email.utils
import pathlib
import re
import sys
import textwrap

changelog, maintainer = sys.argv[1:]
items = []
for heading in re.split(r"^## ", pathlib.Path(changelog).read_text(), flags=re.M)[1:]:
    items += re.findall(r"^- (.*(?:\n  .*)*)", heading, re.M)
    release = re.match(r"([0-9.]+) - (.*)", heading)
    if release:
        date = datetime.datetime.fromisoformat(release[2] + " 00:00:00+00:00")
        print(f"nvrhw ({release[1]}) unstable; urgency=medium\n")
        for item in items:
            print(textwrap.fill(" ".join(item.split()), 78, initial_indent="  * ",
                                subsequent_indent="    ", break_on_hyphens=False))
        print(f"\n -- {maintainer}  {email.utils.format_datetime(date)}\n")
        items = []
