#!/usr/bin/env python3
"""Writes N random scripts for kestu-script into a folder: every command of
the language, with arguments drawn from good values, edge values and
nonsense, against every control class, nested in containers. Run them with
fuzz/run-generated.sh under the sanitizer build: the host may refuse a line
or report run-time errors, but it must never crash or stop on a failure of
its own.

usage: generate-scripts.py FOLDER [COUNT] [SEED]"""

import random
import sys

CLASSES = ["KestuNumberEdit", "KestuPanel3D", "KestuLine3D", "KestuCopyFile"]
PROPERTIES = ["Value", "Text", "Enabled", "Locked", "BackColor", "ForeColor", "Font",
              "BorderWidth", "BorderIn", "BorderOut", "LineStyle", "LineOrientation",
              "DecMaxLength", "IntMaxLength", "NumberFormat", "AllowNegative",
              "SourceFile", "NewFile", "BlockSize", "VolumeSize", "Left", "Top",
              "Width", "Height", "Visible", "TabIndex", "Align", "ToolTipText", "Bogus"]
METHODS = ["ZOrder", "BeginCopyFile", "CancelCopy", "Refresh", "SelectAll", "Nope"]
NUMBERS = ["0", "1", "-1", "2", "15", "255", "32767", "-32768", "65535", "2147483647",
           "-2147483648", "1E+15", "-1E+15", "0.5", "1234567.891", "1E+308", "0x80000005"]
STRINGS = ['""', '"a"', '"1,5"', '"\\xFF\\xFE"', '"&&&"', '"\\u{1F600}"', '"' + "9" * 300 + '"']
WORDS = ["True", "False", "Empty", "Null", "Nothing", "KSTPN_Raised", "LnVertical",
         'font("DejaVu Sans", 9.75, bold)', 'picture("nowhere.png")']


def value(rng):
    pool = rng.choice([NUMBERS, STRINGS, WORDS])
    return rng.choice(pool)


def number(rng):
    return rng.choice(NUMBERS[:12]) if rng.random() < 0.9 else value(rng)


def rect(rng):
    return " ".join(rng.choice(["0", "15", "150", "600", "1500", "3000", "-600", "32767",
                                "2147483647"]) for _ in range(4))


def line(rng, names, containers):
    name = rng.choice(names) if names else "x"
    kind = rng.randrange(24)
    if kind < 4:
        new = "c%d" % rng.randrange(40)
        cls = rng.choice(CLASSES)
        place = " in " + rng.choice(containers) if containers and rng.random() < 0.5 else ""
        names.append(new)
        if cls == "KestuPanel3D":
            containers.append(new)
        return "new %s %s %s%s" % (cls, new, rect(rng) if rng.random() < 0.8 else "", place)
    return rng.choice([
        lambda: "set %s.%s %s" % (name, rng.choice(PROPERTIES), value(rng)),
        lambda: "get %s.%s" % (name, rng.choice(PROPERTIES)),
        lambda: "call %s.%s %s" % (name, rng.choice(METHODS), number(rng) if rng.random() < 0.5 else ""),
        lambda: "size %s %s %s" % (name, number(rng), number(rng)),
        lambda: "focus %s" % name,
        lambda: "type %s %s" % (name, rng.choice(STRINGS + ['"123,45"', '"-9"'])),
        lambda: "key %s %s %s" % (name, number(rng), rng.choice(["0", "1", "2", "4", "7"])),
        lambda: "mouse %s %s %s %s %s %s" % (name, rng.choice(["down", "up", "move"]),
                                             rng.choice(["1", "2", "4"]), "0", number(rng), number(rng)),
        lambda: "click %s %s" % (name, rng.choice(["", "1", "2"])),
        lambda: "dblclick %s" % name,
        lambda: "pointer %s %s %s %s" % (rng.choice(["down", "up", "move"]), number(rng), number(rng),
                                         rng.choice(["", "1", "2", "4"])),
        lambda: "press %s %s" % (number(rng), rng.choice(["", "0", "1", "2", "4"])),
        lambda: "keys %s" % rng.choice(STRINGS + ['"\\t12\\t"']),
        lambda: "accesskey %s" % rng.choice(["a", "c", "s", "7"]),
        lambda: "tick %s" % rng.choice(["", "1", "4", "-1", "1000000"]),
        lambda: "popup %s" % rng.choice(["choose 1", "choose 5", "choose -3", "dismiss"]),
        lambda: "clipboard %s" % rng.choice(STRINGS),
        lambda: "save %s" % name,
        lambda: "saveform gen.json",
        lambda: "openform %s" % rng.choice(["gen.json", "/dev/zero", "nowhere.json"]),
        lambda: "png gen.png %s" % rng.choice(["", name]),
        lambda: "pixel %s %s %s" % (name, number(rng), number(rng)),
        lambda: "screen %s %s" % (number(rng), number(rng)),
        lambda: "form %s %s" % (rng.choice(["Form1", "G"]), rng.choice(["", "3000 3000", rect(rng)[:12]])),
        lambda: "trace draw %s %s" % (name, rng.choice(["on", "off"])),
        lambda: "caret",
        lambda: "remove %s" % name,
        lambda: "paint %s" % name,
        lambda: "ambient %s UserMode %s" % (name, rng.choice(["True", "False", "7"])),
        lambda: "load %s b%d {\"BorderWidth\": %s} %s" % (rng.choice(CLASSES), rng.randrange(9),
                                                          number(rng), rect(rng)),
    ])()


def main():
    folder = sys.argv[1]
    count = int(sys.argv[2]) if len(sys.argv) > 2 else 3000
    rng = random.Random(int(sys.argv[3]) if len(sys.argv) > 3 else 1)
    for i in range(count):
        names, containers = [], []
        lines = ["form Form1 9600 7200"]
        lines += [line(rng, names, containers) for _ in range(rng.randrange(5, 40))]
        with open("%s/gen%04d.kss" % (folder, i), "w") as out:
            out.write("\n".join(lines) + "\n")


main()
