#!/usr/bin/env python3
"""Generates a synthetic game folder for timing the content scan.

    gen_game.py OUT N [--seed S]

OUT/game/System/ receives N .int files in a mix like that of a well-stocked
installation; OUT/program/ receives the int.ini that lists the game's own
files among them and an empty pattern.ini. The mix, by share of N:

    5%  the game's own files, listed in int.ini (engine, menus, drivers)
   10%  model packages: one to three bot classes, a voice, sometimes their
        skins in the same file
   50%  skin packages for those models: skins, each followed by faces
   10%  add-on skin packages whose skin type matches no model
   25%  other add-ons (mutators, maps, menus) that declare no player content

Files are ANSI with CR LF, a few UTF-16LE with a byte-order mark, a few LF
only, as real installations have them. The same N and seed give the same
folder.
"""

import argparse
import os
import random

OWN_FILES = ["Core", "Engine", "Editor", "UnrealEd", "Window", "UMenu", "UBrowser", "UWeb",
             "IpDrv", "IpServer", "Setup", "Startup", "Manifest", "SoftDrv", "OpenGLDrv",
             "D3DDrv", "GlideDrv", "WinDrv", "Galaxy", "UTMenu"]

WEAPONS = ["Ripper", "Flak", "Pulse", "Shock", "Minigun", "Rocket", "Sniper", "Enforcer"]
WORDS = ["alpha", "bravo", "charlie", "delta", "echo", "foxtrot", "golf", "hotel", "india",
         "juliet", "kilo", "lima", "mike", "november", "oscar", "papa", "quebec", "romeo"]


def localisation_lines(rng, count):
    """[Public]-free filler like that of menus and mutators: keys and texts."""
    lines = []
    for i in range(count):
        if rng.random() < 0.08:
            lines.append("")
            lines.append("[%s%d]" % (rng.choice(WORDS).capitalize(), i))
        else:
            words = " ".join(rng.choice(WORDS) for _ in range(rng.randint(3, 12)))
            lines.append("%s%d=\"%s\"" % (rng.choice(WORDS).capitalize(), i, words))
    return lines


def own_file(rng, name):
    return ["[Public]"] + localisation_lines(rng, rng.randint(20, 120))


def model_package(rng, stem, with_skins):
    lines = ["[Public]"]
    for k in range(rng.randint(1, 3)):
        cls = "%s%s" % (stem, "" if k == 0 else str(k + 1))
        lines.append('Object=(Name=%sPack.%sBot,Class=Class,MetaClass=Botpack.Bot,'
                     'Description="%s %d")' % (stem, cls, stem, k + 1))
        lines.append('Object=(Name=%sPack.%s,Class=Class,MetaClass=Botpack.TournamentPlayer,'
                     'Description="%s %d")' % (stem, cls, stem, k + 1))
    kind = rng.choice(["VoiceMale", "VoiceFemale", "VoiceBoss"])
    lines.append('Object=(Name=%sPack.%sVoice,Class=Class,MetaClass=Botpack.%s,'
                 'Description="%s Voice")' % (stem, stem, kind, stem))
    lines += localisation_lines(rng, rng.randint(10, 40))
    if with_skins:
        lines += skin_lines(rng, stem + "Skins")
    return lines


def skin_lines(rng, package):
    lines = []
    for s in range(rng.randint(1, 6)):
        # Four letters and a digit: the form whose digit the scan drops.
        base = rng.choice(WORDS)[:3] + "abcdef"[s]
        lines.append('Object=(Name=%s.%s%d,Class=Texture,Description="%s %d")'
                     % (package, base, s + 1, package, s + 1))
        for part in range(2, 5):
            lines.append("Object=(Name=%s.%s%d,Class=Texture)" % (package, base, part))
        for f in range(rng.randint(0, 4)):
            face = rng.choice(WORDS).capitalize()
            lines.append('Object=(Name=%s.%s5%s,Class=Texture,Description="%s")'
                         % (package, base, face, face))
    return lines


def skin_package(rng, stem):
    return ["[public]"] + skin_lines(rng, stem + "Skins")


def other_addon(rng, name):
    lines = ["[Public]"]
    for w in range(rng.randint(1, 5)):
        lines.append('Object=(Name=%s.%s%s,Class=Class,MetaClass=Engine.Mutator,'
                     'Description="%s %s")' % (name, name, rng.choice(WEAPONS), name, w))
    lines.append('Object=(Name=%s.%sMenu,Class=Class,MetaClass=UMenu.UMenuModMenuItem)'
                 % (name, name))
    lines += localisation_lines(rng, rng.randint(10, 80))
    return lines


def encode(rng, lines):
    roll = rng.random()
    if roll < 0.03:
        return b"\xff\xfe" + "\r\n".join(lines).encode("utf-16-le") + "\r\n".encode("utf-16-le")
    if roll < 0.10:
        return ("\n".join(lines) + "\n").encode("cp1252")
    return ("\r\n".join(lines) + "\r\n").encode("cp1252")


def generate(out, count, seed):
    rng = random.Random(seed)
    system = os.path.join(out, "game", "System")
    program = os.path.join(out, "program")
    os.makedirs(system, exist_ok=True)
    os.makedirs(program, exist_ok=True)

    own = max(1, count * 5 // 100)
    models = max(1, count * 10 // 100)
    skins = count * 50 // 100
    unmatched = count * 10 // 100
    others = count - own - models - skins - unmatched

    files = {}
    excluded = []
    for i in range(own):
        name = "%s%s.int" % (OWN_FILES[i % len(OWN_FILES)], "" if i < len(OWN_FILES) else i)
        excluded.append(name)
        files[name] = own_file(rng, name)
    stems = ["Hero%04d" % i for i in range(models)]
    for stem in stems:
        files[stem + "Pack.int"] = model_package(rng, stem, rng.random() < 0.3)
    for i in range(skins):
        files["%sSkins%d.int" % (stems[i % len(stems)], i)] = skin_package(rng, stems[i % len(stems)])
    for i in range(unmatched):
        files["Odd%04dSkins.int" % i] = skin_package(rng, "Odd%04d" % i)
    for i in range(others):
        files["Addon%04d.int" % i] = other_addon(rng, "Addon%04d" % i)

    for name, lines in files.items():
        with open(os.path.join(system, name), "wb") as f:
            f.write(encode(rng, lines))
    with open(os.path.join(program, "int.ini"), "wb") as f:
        f.write(("\r\n".join(excluded) + "\r\n").encode("cp1252"))
    open(os.path.join(program, "pattern.ini"), "wb").close()


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    parser.add_argument("out")
    parser.add_argument("count", type=int)
    parser.add_argument("--seed", type=int, default=1)
    args = parser.parse_args()
    generate(args.out, args.count, args.seed)


if __name__ == "__main__":
    main()
