"""Builds the manual into build/docs, at the top of the tree."""
import html
import os
import pathlib
import re
import shutil
import subprocess
import sys

SITE = pathlib.Path("tools/site")
OUTPUT = pathlib.Path("build/docs")
LIVE = pathlib.Path("build/live/pages")


def version():
    lines = pathlib.Path("include/bv/Version.h").read_text(encoding="utf-8")
    return ".".join(re.findall(r"VERSION_(?:MAJOR|MINOR|PATCH) = (\d+);", lines))


def prepare():
    """Doxygen's own layout and header, with our navigation and without a script from elsewhere."""
    layout, header = pathlib.Path("build/docs-layout.xml"), pathlib.Path("build/docs-header.html")
    subprocess.run(["doxygen", "-l", layout], check=True)
    navigation = (SITE / "navigation.xml").read_text(encoding="utf-8")
    if LIVE.is_dir():
        navigation = navigation.replace("<!-- live -->", '<tab type="user" url="live/index.html" title="Live pages"/>')
    text = re.sub(r" *<navindex>.*</navindex>\n", lambda _: navigation, layout.read_text(encoding="utf-8"), flags=re.DOTALL)
    layout.write_text(text, encoding="utf-8")
    subprocess.run(["doxygen", "-w", "html", header, "build/docs-footer.html", "build/docs-style.css"], check=True)
    header.write_text(header.read_text(encoding="utf-8").replace("$mathjax", ""), encoding="utf-8")


def run_doxygen():
    shutil.rmtree(OUTPUT, ignore_errors=True)
    OUTPUT.mkdir(parents=True)
    environment = os.environ | {"BV_VERSION": version(), "BV_STYLE": "/usr/share/doxygen-awesome-css"}
    run = subprocess.run(["doxygen", SITE / "Doxyfile"], env=environment, check=False)
    if run.returncode != 0:
        sys.exit("tools/docs: Doxygen warns")


def typeset(formula, display):
    """A formula as MathML, which browsers draw by themselves."""
    script = ("process.stdout.write(require('katex').renderToString(process.argv[1], "
              f"{{output: 'mathml', displayMode: {str(display).lower()}}}))")
    run = subprocess.run(["node", "-e", script, html.unescape(formula)], env=os.environ | {"NODE_PATH": "/usr/share/nodejs"},
                         check=True, capture_output=True, text=True)
    return re.search(r"<math.*</math>", run.stdout, re.DOTALL)[0]


def slug(title):
    """The anchor that a heading has where Markdown is shown by itself."""
    plain = html.unescape(re.sub(r"<[^>]*>", "", title)).lower()
    return re.sub(r"[^\w\- ]", "", plain).strip().replace(" ", "-")


def to_the_left(fragment):
    """Code without the indentation that all of its lines have."""
    lines = re.findall(r'(?:<div class="line">)( *)(?=[^ \n])(?!</div>)', fragment[0])
    indentation = " " * min(map(len, lines), default=0)
    return fragment[0].replace(f'<div class="line">{indentation}', '<div class="line">')


def finish(page):
    text = before = page.read_text(encoding="utf-8")
    text = re.sub(r"\\\((.+?)\\\)", lambda match: typeset(match[1], False), text, flags=re.DOTALL)
    text = re.sub(r"\\\[(.+?)\\\]", lambda match: typeset(match[1], True), text, flags=re.DOTALL)
    if page.name.startswith(("md_", "index")):
        text = re.sub(r'<div class="fragment">.*?</div><!-- fragment -->', to_the_left, text, flags=re.DOTALL)
        text = re.sub(r'(<h[1-6]>)<a class="anchor" id="(autotoc_md\d+)"></a>(.*?)(</h[1-6]>)',
                      lambda match: f'{match[1]}<a class="anchor" id="{match[2]}"></a><a class="anchor" id="{slug(match[3])}">'
                                    f"</a>{match[3].strip()}{match[4]}", text, flags=re.DOTALL)
    if text != before:
        page.write_text(text, encoding="utf-8")


prepare()
run_doxygen()
for page in sorted(OUTPUT.glob("*.html")):
    finish(page)
if LIVE.is_dir():
    shutil.copytree(LIVE, OUTPUT / "live")
