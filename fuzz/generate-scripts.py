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

CLASSES = ["KestuNumberEdit", "KestuTextEdit", "KestuPanel3D", "KestuLine3D", "KestuCopyFile",
           "KestuActiveCommand", "KestuTBBar", "KestuTBSeparator", "KestuTBButton"]
CLASSES += ["Label", "CheckBox", "OptionButton", "Frame"]
CLASSES += ["CommandButton", "TextBox", "ComboBox"]
CONTAINERS = ["KestuPanel3D", "KestuTBBar", "Frame"]
# Each class's own properties and methods (a name a class lacks stops the
# script as a bad line), and the extender's, which every control has.
PROPERTIES = {
    "KestuNumberEdit": ["Border3D", "Shadow", "ShadowColor", "BackColor", "ForeColor",
                        "NegativeColor", "LockedColor", "DisabledColor", "Text", "Value",
                        "IntMaxLength", "DecMaxLength", "Font", "Enabled", "Selection3D",
                        "AutoSelect", "AllowNegative", "ThSeparator", "NumberFormat", "Locked",
                        "dcDataValue"],
    "KestuTextEdit": ["Border3D", "Shadow", "ShadowColor", "BackColor", "ForeColor",
                      "SelectColor", "Text", "Mask", "MaxLength", "IncludeLiterals", "TextStyle",
                      "FillChar", "Enabled", "Font", "Selection3D", "AutoSelect", "DefaultValue",
                      "Locked", "DisabledColor", "LockedColor", "TopText", "LeftText", "SelStart",
                      "CursorPos", "SelLength", "IsEmpty", "TextWithoutMask", "SelText",
                      "dcDataValue"],
    "KestuPanel3D": ["Light3DColor", "Shadow3DColor", "BackColor", "BorderOut", "BorderIn",
                     "BorderWidth"],
    "KestuLine3D": ["Light3DColor", "Shadow3DColor", "LineStyle", "LineOrientation"],
    "KestuCopyFile": ["StartCaption", "BlockSize", "VolumeSize", "ForeColor", "SourceFile",
                      "NewFile"],
    "KestuActiveCommand": ["Caption", "Enabled", "Font", "ForeColor", "BackColor",
                           "FocusedFRColor", "LightColorIn", "ShadowColorOut", "Picture",
                           "DisabledPicture", "DownPicture", "FocusedPicture", "PictSize",
                           "PictPosition", "Margin", "Distance", "FocusedBold",
                           "FocusedUnderline", "ActiveBorder", "Style", "hwnd"],
    "KestuTBBar": ["Light3DColor", "Shadow3DColor", "BackColor", "ShowLeftLines", "AutoHeight",
                   "ShowTwoLeftLines"],
    "KestuTBSeparator": ["Light3DColor", "Shadow3DColor", "BackColor", "AutoHeight"],
}
PROPERTIES["KestuTBButton"] = PROPERTIES["KestuActiveCommand"] + ["AutoSize"]
PROPERTIES["Frame"] = ["Font", "Enabled", "BackColor", "ForeColor", "Caption"]
PROPERTIES["Label"] = PROPERTIES["Frame"] + ["Alignment", "WordWrap", "BackStyle"]
PROPERTIES["CheckBox"] = PROPERTIES["Frame"] + ["Alignment", "Value"]
PROPERTIES["OptionButton"] = PROPERTIES["CheckBox"]
PROPERTIES["CommandButton"] = PROPERTIES["Frame"]
PROPERTIES["TextBox"] = ["Font", "Enabled", "BackColor", "ForeColor", "Text", "MaxLength", "Locked",
                         "SelStart", "SelLength", "SelText"]
PROPERTIES["ComboBox"] = ["Font", "Enabled", "BackColor", "ForeColor", "ListIndex", "ListCount",
                          "Text"]
EXTENDER = ["Left", "Top", "Width", "Height", "Visible", "TabIndex", "Align", "ToolTipText",
            "Default", "Cancel"]
METHODS = {"KestuNumberEdit": ["SelectAll", "XFocus"], "KestuCopyFile": ["BeginCopyFile"],
           "KestuTextEdit": ["SelectAll", "XFocus", "SetPosition", "SetSelectedText",
                             "IsValidChar"],
           "KestuPanel3D": [], "KestuLine3D": [], "KestuActiveCommand": ["XFocus"],
           "KestuTBBar": [], "KestuTBSeparator": [], "KestuTBButton": [], "Label": [],
           "CheckBox": [], "OptionButton": [], "Frame": [], "CommandButton": [],
           "TextBox": ["SelectAll"],
           "ComboBox": ['AddItem "a" Empty', 'AddItem "&b" 0', 'AddItem "-" -1', "AddItem",
                        "RemoveItem 0", "RemoveItem 40000", "Clear", "List 0", "List -1"]}
NUMBERS = ["0", "1", "-1", "2", "15", "255", "32767", "-32768", "65535", "2147483647",
           "-2147483648", "1E+15", "-1E+15", "0.5", "1234567.891", "1E+308", "0x80000005"]
STRINGS = ['""', '"a"', '"1,5"', '"99/99/9999"', '"(999) AAA-aaXCc#"', '"ç"', '"\\xFF\\xFE"', '"&&&"', '"\\u{1F600}"', '"' + "9" * 300 + '"']
WORDS = ["True", "False", "Empty", "Null", "Nothing", "KSTPN_Raised", "LnVertical", "ccBarTo32x32", "lblCenter",
         'font("DejaVu Sans", 9.75, bold)', 'picture("nowhere.png")',
         'picture("disk16.png")']


def value(rng):
    pool = rng.choice([NUMBERS, STRINGS, WORDS])
    return rng.choice(pool)


def number(rng):
    return rng.choice(NUMBERS[:12]) if rng.random() < 0.9 else value(rng)


def rect(rng):
    return " ".join(rng.choice(["0", "15", "150", "600", "1500", "3000", "-600", "32767",
                                "2147483647"]) for _ in range(4))


classes = {}


def member(rng, name, table, extra):
    return rng.choice(table[classes.get(name, "KestuPanel3D")] + extra)


def line(rng, names, containers):
    # A script stops at its first bad line: names are drawn from the
    # controls that exist, so that most lines run.
    if not names or rng.randrange(24) < 4:
        new = "c%d" % len(names) + "_%d" % rng.randrange(1000)
        cls = rng.choice(CLASSES)
        classes[new] = cls
        place = " in " + rng.choice(containers) if containers and rng.random() < 0.5 else ""
        # A size past any screen is refused: such a control is not named again.
        good = rng.random() < 0.85
        where = " ".join([rng.choice(["0", "15", "150", "600", "-600"]) for _ in range(2)] +
                         [rng.choice(["0", "15", "600", "1500", "3000"]) for _ in range(2)])
        if good:
            names.append(new)
            if cls in CONTAINERS:
                containers.append(new)
        return "new %s %s %s%s" % (cls, new, where if good else rect(rng), place)
    name = rng.choice(names)
    return rng.choice([
        lambda: "set %s.%s %s" % (name, member(rng, name, PROPERTIES, EXTENDER), value(rng)),
        lambda: "get %s.%s" % (name, member(rng, name, PROPERTIES, EXTENDER)),
        lambda: "call %s.%s" % (name, member(rng, name, METHODS, ["ZOrder", "ZOrder 1"])),
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
        lambda: "form Form1 %s" % rng.choice(["", "3000 3000", "9600 7200", "2147483647 15"]),
        lambda: "trace draw %s %s" % (name, rng.choice(["on", "off"])),
        lambda: "caret",
        lambda: remove(name, names, containers),
        lambda: "paint %s" % name,
        lambda: "ambient %s UserMode %s" % (name, rng.choice(["True", "False", "7"])),
        lambda: "load %s b%d_%d {\"BorderWidth\": %s} %s" % (rng.choice(CLASSES), len(names),
                                                              rng.randrange(1000), number(rng),
                                                              rect(rng)),
    ])()


def remove(name, names, containers):
    # What a container held goes with it; the names a script may still use
    # are not tracked that far, so a later line may still name one.
    names.remove(name)
    if name in containers:
        containers.remove(name)
    return "remove %s" % name


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
