"""Writes a user.ini of about MIB mebibytes: a [Botpack.ChallengeBotInfo]
section in the middle of many sections of short lines (the shape that costs
a reader the most per byte), ANSI with CR LF.

    python3 bench/gen_user_ini.py OUT MIB
"""
import sys

out, mib = sys.argv[1], float(sys.argv[2])
target = int(mib * 1024 * 1024)
section = ["[Botpack.ChallengeBotInfo]"] + [
    "BotNames[%d]=Bot%d" % (i, i) for i in range(32)
] + [""]


def padding(size):
    lines, written, number = [], 0, 0
    while written < size:
        if number % 50 == 0:
            line = "[Mod%d.Settings]" % (number // 50)
        else:
            line = "Key%d=Value%d" % (number % 50, number)
        lines.append(line)
        written += len(line) + 2
        number += 1
    return lines


half = max(0, (target - 2000) // 2)
lines = padding(half) + [""] + section + padding(target - half - 2000)
with open(out, "wb") as f:
    f.write("\r\n".join(lines).encode("cp1252")[:target].rsplit(b"\r\n", 1)[0] + b"\r\n")
