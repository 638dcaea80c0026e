"""Checks, at the top of the tree, that every local link and anchor of the manual and of the pages in the sources leads
somewhere, that the manual loads nothing from elsewhere, and that the headers have the comments that Doxygen does not miss.

Usage: check.py [--sources | --comments]     the links of the pages in the sources alone, or the headers alone
"""
import html.parser
import pathlib
import re
import sys
import urllib.parse

SITE = pathlib.Path("build/docs")
PAGES = [path for pattern in ("*.md", "docs/**/*.md", "examples/**/*.md", "internal/*.md", "tests/*.md")
         for path in pathlib.Path().glob(pattern)]
LOADS = {("script", "src"), ("img", "src"), ("object", "data"), ("link", "href"), ("iframe", "src"), ("source", "src")}
complaints = []


class Page(html.parser.HTMLParser):
    """The anchors and the references of a page of the site."""

    def __init__(self, text):
        super().__init__()
        self.anchors, self.references = set(), []
        self.feed(text)

    def handle_starttag(self, tag, attributes):
        for name, value in attributes:
            if name == "id" or (tag == "a" and name == "name"):
                self.anchors.add(value)
            if (tag, name) == ("a", "href") or (tag, name) in LOADS:
                self.references.append((tag, value or ""))


def is_elsewhere(reference):
    return bool(re.match(r"[a-z][a-z0-9+.-]*:|//", reference))


def check_site():
    pages = {path: Page(path.read_text(encoding="utf-8")) for path in SITE.rglob("*.html")}
    if not pages:
        sys.exit("tools/docs: there is no page in build/docs")
    for path, page in pages.items():
        for tag, reference in page.references:
            if is_elsewhere(reference):
                if tag != "a" and not reference.startswith(("data:", "javascript:")):
                    complaints.append(f"{path}: loads {reference}")
                continue
            name, _, anchor = reference.partition("#")
            target = path if name == "" else path.parent / urllib.parse.unquote(name)
            if not target.exists():
                complaints.append(f"{path}: no such file: {reference}")
            elif anchor and target in pages and urllib.parse.unquote(anchor) not in pages[target].anchors:
                complaints.append(f"{path}: no such anchor: {reference}")
    for path in SITE.rglob("*.css"):
        for reference in re.findall(r"(?:url\(|@import)\s*[\"']?([^\"')\s]+)", path.read_text(encoding="utf-8")):
            if is_elsewhere(reference) and not reference.startswith("data:"):
                complaints.append(f"{path}: loads {reference}")


def anchors(page):
    """The anchors of the headings, as they are where Markdown is shown by itself."""
    text = re.sub(r"^```.*?^```", "", page.read_text(encoding="utf-8"), flags=re.MULTILINE | re.DOTALL)
    found = set()
    for title in re.findall(r"^#+ +(.*)$", text, re.MULTILINE):
        plain = re.sub(r"\[([^]]*)\]\([^)]*\)", r"\1", title).lower()
        found.add(re.sub(r"[^\w\- ]", "", plain).strip().replace(" ", "-"))
    return found


def check_sources():
    for page in PAGES:
        text = re.sub(r"^```.*?^```|`[^`\n]*`", "", page.read_text(encoding="utf-8"), flags=re.MULTILINE | re.DOTALL)
        for reference in re.findall(r"\]\(([^)\s]+)\)", text):
            if is_elsewhere(reference):
                continue
            name, _, anchor = reference.partition("#")
            target = page if name == "" else page.parent / name
            if not target.exists():
                complaints.append(f"{page}: no such file: {reference}")
            elif anchor and target.suffix == ".md" and anchor not in anchors(target):
                complaints.append(f"{page}: no such anchor: {reference}")


def check_comments():
    """Doxygen warns of neither an enumerator nor a concept without a comment."""
    for header in pathlib.Path("include").rglob("*.h"):
        if "detail" in header.parts:
            continue
        text = header.read_text(encoding="utf-8")
        for enumerators in re.finditer(r"\benum\b[^;{}]*\{([^}]*)\}", text):
            for line in enumerators[1].split("\n"):
                if re.match(r"\s*\w", line) and "///<" not in line:
                    complaints.append(f"{header}: an enumerator without a comment: {line.strip()}")
        for concept in re.finditer(r"^(.*)\ntemplate <.*>\nconcept (\w+)", text, re.MULTILINE):
            if not concept[1].lstrip().startswith("///"):
                complaints.append(f"{header}: a concept without a comment: {concept[2]}")


checks = {"--sources": [check_sources], "--comments": [check_comments]}
for check in checks[sys.argv[1]] if len(sys.argv) > 1 else [check_site, check_sources, check_comments]:
    check()
if complaints:
    sys.exit("\n".join(complaints))
