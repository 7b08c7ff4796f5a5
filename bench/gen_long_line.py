#!/usr/bin/env python3
"""Generates a game folder whose one .int file has very long lines.

    gen_long_line.py OUT TEXTURES PER_LINE

OUT/game/System/Long.int holds bot-class declarations, each followed by
PER_LINE times ",Class=Texture" on its line, TEXTURES of those in all (the
shape of a broken add-on); OUT/program/ gets an empty int.ini and
pattern.ini. With PER_LINE equal to TEXTURES the file is one line of
declaration; a smaller PER_LINE spreads about the same bytes over many
lines, which is the baseline the one line is measured against.
"""

import os
import sys

DECLARATION = ('Object=(Name=LongPack.LongBot,Class=Class,MetaClass=Botpack.Bot,'
               'Description="Long")')


def main():
    out, textures, per_line = sys.argv[1], int(sys.argv[2]), int(sys.argv[3])
    system = os.path.join(out, "game", "System")
    program = os.path.join(out, "program")
    os.makedirs(system, exist_ok=True)
    os.makedirs(program, exist_ok=True)
    for name in ("int.ini", "pattern.ini"):
        open(os.path.join(program, name), "wb").close()
    line = (DECLARATION + ",Class=Texture" * per_line + "\r\n").encode("ascii")
    with open(os.path.join(system, "Long.int"), "wb") as f:
        f.write(b"[Public]\r\n")
        for _ in range(textures // per_line):
            f.write(line)


if __name__ == "__main__":
    main()
