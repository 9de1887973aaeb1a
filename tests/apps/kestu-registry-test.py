"""kestu-registry as a package index or a designer runs it: the manifest
parses and lists the nine toolbox controls with their pages and icons, the
icons it writes are PNG files, the manifest the build wrote is the one it
prints, and a bad command line is one line on standard error.

usage: kestu-registry-test.py KESTU_REGISTRY BUILT_MANIFEST
"""
import json
import pathlib
import subprocess
import sys
import tempfile

TOOLBOX = {"KestuActiveCommand", "KestuCopyFile", "KestuLine3D", "KestuNumberEdit",
           "KestuPanel3D", "KestuTBBar", "KestuTBButton", "KestuTBSeparator", "KestuTextEdit"}
PALETTE = set(".kwlgbBcCGLrRyYmM")
failures = []


def check(ok, what):
    if not ok:
        failures.append(what)


def run(*args):
    return subprocess.run([program, *args], capture_output=True, text=True)


program, built = sys.argv[1], pathlib.Path(sys.argv[2])

done = run("--json")
check(done.returncode == 0 and done.stderr == "", f"--json: {done.returncode} {done.stderr}")
manifest = json.loads(done.stdout)
check(manifest["library"] == "kestu" and manifest["version"].count(".") == 2,
      f"library and version: {manifest['library']} {manifest['version']}")
controls = {c["name"]: c for c in manifest["controls"]}
check(set(controls) == TOOLBOX, f"controls listed: {sorted(controls)}")
for name, c in controls.items():
    check(c["property_pages"][-1:] == ["ppgSobre"], f"{name}'s pages: {c['property_pages']}")
    check(c["icon_file"] == f"icons/{name}.png", f"{name}'s icon file: {c['icon_file']}")
    icon = c["icon"]
    check(len(icon) == 16 and all(len(row) == 16 and set(row) <= PALETTE for row in icon),
          f"{name}'s icon art")
    check(c["default_size"]["width"] > 0 and c["default_size"]["height"] > 0, f"{name}'s size")
check(controls["KestuTBButton"]["property_pages"] == ["ppgButtons", "ppgSobre"],
      f"KestuTBButton's pages: {controls['KestuTBButton']['property_pages']}")
check(controls["KestuNumberEdit"]["default_event"] == "Changed", "KestuNumberEdit's event")

every = json.loads(run("--json", "--all").stdout)["controls"]
check(len(every) > len(TOOLBOX) and {c["name"] for c in every if c["toolbox"]} == TOOLBOX,
      "--all lists the dialog controls besides the toolbox's")

check(built.read_text(encoding="utf-8") == done.stdout, f"{built} differs from --json")

listing = run().stdout.splitlines()
check(len(listing) == 9 and listing[0].split()[:3] == ["KestuActiveCommand", "Click",
                                                       "ppgButtons,ppgSobre"],
      f"the listing: {listing[:1]}")

with tempfile.TemporaryDirectory() as folder:
    icons = pathlib.Path(folder) / "new" / "icons"
    done = run("--icons", str(icons))
    check(done.returncode == 0 and done.stdout == "", f"--icons: {done.returncode} {done.stdout}")
    written = {p.stem for p in icons.glob("*.png")}
    check(written == TOOLBOX, f"icons written: {sorted(written)}")
    check(all(p.read_bytes()[:8] == b"\x89PNG\r\n\x1a\n" for p in icons.glob("*.png")),
          "icons are PNG files")
    blocked = pathlib.Path(folder) / "file"
    blocked.write_text("")
    done = run("--icons", str(blocked / "icons"))
    check(done.returncode == 1 and len(done.stderr.splitlines()) == 1,
          f"an icon folder that cannot be made: {done.returncode} {done.stderr!r}")

for args in (["--bogus"], ["--icons"]):
    done = run(*args)
    check(done.returncode == 2 and done.stdout == "" and len(done.stderr.splitlines()) == 1,
          f"{args}: {done.returncode} {done.stderr!r}")

for failure in failures:
    print("kestu-registry:", failure)
sys.exit(1 if failures else 0)
