"""Does in a clean root what the README tells newcomers: installs the packages, builds programs, and draws a picture.

Usage: clean_root.py PACKAGES     the folder that holds the packages; must be run as root

Then it removes the packages and looks for what they left. The root is Debian's minimal system with what the README
installs, and GDB. It is made from the sources of this machine's apt, and kept beside the packages for the next run. There is
no network in it.
"""
import contextlib
import json
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import time

import manifest
import readme

sys.path.append(str(manifest.TOP / "tests" / "raytracer"))
import png  # noqa: E402

FOLDER = pathlib.Path(sys.argv[1]).resolve()
ROOT = FOLDER / "clean-root"
HOME = ROOT / "root"
NAMES = [f"libbvbaseutils{manifest.numbers()[1]}", "libbvbaseutils-dev", "libbvbaseutils-doc"]
PICTURE = manifest.TOP / "docs" / "live" / "pictures" / "raytracer.png"  # drawn as the README's is

# Mounts that nobody else sees, and processes that end with the first one: nothing stays, whatever happens.
APART = ("unshare", "--mount", "--pid", "--fork", "--kill-child", "--mount-proc")
ENTER = ('mount -t proc proc "$0/proc" && mount --rbind /dev "$0/dev" && '
         'exec chroot "$0" env -i HOME=/root LANG=C.UTF-8 PATH=/usr/sbin:/usr/bin:/sbin:/bin sh -euc "cd; $1"')

# What apt, dpkg and ldconfig remember of their work.
BOOKKEEPING = ("var/cache/apt/", "var/cache/debconf/", "var/cache/ldconfig/", "var/lib/apt/", "var/lib/dpkg/", "var/log/")


def fail(complaint):
    sys.exit(f"tools/package: {complaint}")


def check(holds, complaint):
    if not holds:
        fail(complaint)


@contextlib.contextmanager
def step(name):
    start = time.monotonic()
    yield
    print(f"{name}: {time.monotonic() - start:.0f} s", flush=True)


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def inside(script):
    """What commands print that are run in the root, one after the other, at root's home. Who is asked whether, says yes."""
    done = subprocess.run([*APART, "--net", "sh", "-c", ENTER, ROOT, script], capture_output=True, text=True, input="y\n")
    check(done.returncode == 0, f"this fails in the clean root:\n{script}\n{done.stdout[-2000:]}{done.stderr[-2000:]}")
    return done.stdout


def compare(output, wanted):
    differences = readme.differences(output, wanted)
    check(not differences, f"the README's program prints something else:\n{differences}")


def sources():
    """Debian's own sources among those of apt, a line each."""
    lines = output("apt-get", "indextargets", "--format", "deb $(REPO_URI) $(RELEASE) $(COMPONENT)", "Created-By: Packages",
                   "Origin: Debian")
    check(lines, "apt knows no source of Debian's packages; run apt-get update")
    return sorted(set(lines.splitlines()))


def installed_by(files):
    """The packages of Debian that the README's commands install."""
    commands = re.findall(r"^apt-get install (.*)$", "".join(files.values()), re.MULTILINE)
    return sorted({name for command in commands for name in command.split() if "/" not in name})


def make_root(files):
    """Unpacks the root, which is made anew if something else goes into it than into the one that is kept."""
    kept, recipe = FOLDER / "clean-root.tar", FOLDER / "clean-root.json"
    suite = re.search(r"^VERSION_CODENAME=(.*)$", pathlib.Path("/etc/os-release").read_text(encoding="utf-8"),
                      re.MULTILINE)[1]
    wanted = json.dumps([suite, sources(), [*installed_by(files), "gdb"]], indent=1)
    ROOT.mkdir()
    if not kept.exists() or not recipe.exists() or recipe.read_text(encoding="utf-8") != wanted:
        with step("a clean root is made"):
            kept.unlink(missing_ok=True)
            _, lines, names = json.loads(wanted)
            (ROOT / "sources.list").write_text("".join(f"{line}\n" for line in lines), encoding="utf-8")
            made = subprocess.run(
                [*APART, "env", f"TMPDIR={ROOT}", "mmdebstrap", "--quiet", "--variant=minbase", "--include=" + ",".join(names),
                 '--aptopt=APT::Install-Recommends "false"', suite, ROOT / "root.tar", ROOT / "sources.list"],
                capture_output=True, text=True)
            reason = re.findall(r"^E: .*", made.stderr, re.MULTILINE) or [made.stderr]
            check(made.returncode == 0, f"cannot make a clean root, is there a network? {reason[0]}")
            (ROOT / "root.tar").rename(kept)
            recipe.write_text(wanted, encoding="utf-8")
            shutil.rmtree(ROOT)
            ROOT.mkdir()
    with step("the clean root is unpacked"):
        output("tar", "-C", ROOT, "--numeric-owner", "-xf", kept)


def listing():
    """All files and folders of the root but root's own: their kind and owner, and the size of a file or the link's target."""
    entries = {}
    for path in ROOT.rglob("*"):
        name = path.relative_to(ROOT).as_posix()
        if not name.startswith(("root/", *BOOKKEEPING)):
            known = path.lstat()
            rest = path.readlink() if path.is_symlink() else known.st_size if path.is_file() else None
            entries[name] = (known.st_mode, known.st_uid, known.st_gid, rest)
    return entries


def check_debugger():
    """GDB finds the printers by itself, where root's packages put them."""
    line = 1 + (HOME / "main.cpp").read_text(encoding="utf-8").splitlines().index("    try")
    shown = inside("g++ -g main.cpp $(pkg-config --cflags --libs BvBaseUtils) -o with_debug_information\n"
                   f"gdb -batch -ex 'break {line}' -ex run -ex 'print turn' -ex 'print ray' with_debug_information 2>&1")
    for beginning in (r"\$1 = ORTHONORMAL = \{row 1 = \(", r"\$2 = origin \(0.5, 0.5, -5\), direction \(0, 0, 1\)"):
        check(re.search(f"^{beginning}", shown, re.MULTILINE), f"GDB shows values without the printers:\n{shown}")


def check_picture():
    drawn, wanted = png.read(HOME / "bunny.png"), png.read(PICTURE)
    check((drawn.width, drawn.height) == (wanted.width, wanted.height), f"a picture of {drawn.width}x{drawn.height} is drawn")
    differences = drawn.differences(wanted)
    # What goes through the C library's pow and tan may differ by one step of 255.
    check(len(differences) <= wanted.width * wanted.height // 1000 and max(differences, default=0) <= 1,
          f"{len(differences)} pixels of the packaged ray tracer's picture are others, by up to {max(differences, default=0)}")


def check_manual():
    manual = ROOT / "usr" / "share" / "doc" / NAMES[2] / "manual"
    check((manual / "README.md").is_file(), f"{NAMES[2]} has no README.md")
    has_site = (manifest.TOP / "build" / "docs" / "index.html").exists()
    check((manual / "site" / "index.html").is_file() == has_site, f"{NAMES[2]} and build/docs differ in the manual's site")


def main():
    packages = sorted(FOLDER.glob("*.deb"))
    check([file.name.partition("_")[0] for file in packages] == sorted(NAMES), f"other packages are there: {packages}")
    shutil.rmtree(ROOT, ignore_errors=True)  # of a run that was killed
    files = readme.shown(readme.README.read_text(encoding="utf-8"))
    make_root(files)
    before = listing()
    readme.write(HOME)
    (HOME / "build" / "packages").mkdir(parents=True)
    for file in packages:
        shutil.copy(file, HOME / "build" / "packages")
    with step("the packages are installed"):
        inside(files["install.sh"])
    check_manual()
    with step("the program is built and run"):
        compare(inside(files["build.sh"]).partition("Built target my_renderer\n")[2], files["output.txt"])
        compare(inside(files["pkg-config.sh"]), files["output.txt"])
    with step("GDB shows its values"):
        check_debugger()
    with step("the ray tracer is built and run"):
        inside(files["picture.sh"])
        check_picture()
    with step("the packages are removed"):
        inside(f"apt-get purge -y {' '.join(NAMES)}")
    after = listing()
    changed = sorted(name for name in before.keys() | after.keys() if before.get(name) != after.get(name))
    # Python keeps compiled what root's GDB imports of it: it lies with other packages' files.
    changed = [name for name in changed if name.partition("/__pycache__")[0] not in before or name in before]
    check(not changed, "the packages leave behind or change: " + " ".join(changed))
    print(f"nothing is left: {len(before)} files and folders are as before")


if __name__ == "__main__":
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    try:
        main()
    finally:
        shutil.rmtree(ROOT, ignore_errors=True)
