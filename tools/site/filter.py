"""A header or a page as Doxygen is to read it, line for line. Runs at the top of the tree."""
import os
import pathlib
import re
import sys

path = pathlib.Path(sys.argv[1])
text = path.read_text(encoding="utf-8")
settings = pathlib.Path("tools/site/Doxyfile").read_text(encoding="utf-8").replace("\\\n", " ")
INPUT = re.search(r"^INPUT += (.*)$", settings, re.MULTILINE)[1].split()


def as_empty_lines(match):
    return "\n" * match[0].count("\n")


def link(match):
    """A link of a page: to what the manual has, to an anchor, which Doxygen does not know, or none."""
    words, target = match[1].replace("`", ""), match[2]  # Doxygen shows them as they are
    if re.match(r"[a-z]+:", target):
        return match[0]
    if target.startswith("#"):
        return f'<a href="{target}">{words}</a>'
    name, _, anchor = target.partition("#")
    file = pathlib.PurePosixPath(os.path.relpath(path.parent / name))
    if file.suffix == ".h":
        return f"[{words}](@ref {str(file).removeprefix('include/')})"
    if anchor and file.suffix == ".md":
        page = "index" if str(file) == "docs/README.md" else "md_" + re.sub("[/-]", "_", str(file.with_suffix("")))
        return f'<a href="{page}.html#{anchor}">{words}</a>'
    return f"[{words}]({target})" if any(str(file).startswith((f"{known}/", known)) for known in INPUT) else words


if path.suffix == ".md":
    parts = re.split(r"(^```.*?^```)", text, flags=re.MULTILINE | re.DOTALL)
    parts[::2] = [re.sub(r"(?<!!)\[([^\[\]]*)\]\(([^)\s]+)\)", link, part) for part in parts[::2]]
    sys.stdout.reconfigure(encoding="utf-8")
    sys.stdout.write("".join(parts))
    sys.exit()


NAME = r"(operator\[\]|operator\(\)|operator[^\s\w(]+|(?!requires)\b\w+)\("


def arguments(text):
    """What stands between the first parenthesis and its partner, cut at each comma and without blanks."""
    depth, found = 0, [""]
    for character in text[text.index("("):].replace(" ", ""):
        depth += {"(": 1, "<": 1, ")": -1, ">": -1}.get(character, 0)
        if depth == 0:
            break
        if character == "," and depth == 1:
            found.append("")
        else:
            found[-1] += character
    found[0] = found[0][1:]
    return [argument for argument in found if argument]


def with_copies(lines):
    """The comments that `@copydoc` names, in its place and in one line: Doxygen finds no overload of a function template."""
    documented, comment, declaration = [], [], ""
    for line in lines:
        text = line.strip()
        copied = re.match(r"/// @copydoc " + NAME, text)
        if copied:
            types = [argument.partition("(")[0] for argument in arguments(text[copied.end() - 1:])]
            for name, names, words in reversed(documented):
                if name == copied[1] and len(types) == len(names) and all(map(str.startswith, names, types)):
                    line = line[:line.index("/")] + "/// " + " ".join(words)
                    break
        yield line
        if text.startswith("///"):
            comment, declaration = ([] if text in ("/// @{", "/// @}") else [*comment, text[3:].strip() or "<p>"]), ""
            continue
        declaration += " " + text
        if re.search(r"[;{}]$", text) or not text:
            called = re.search(NAME, declaration)
            if comment and called and not comment[0].startswith("@copydoc"):
                documented.append((called[1], arguments(declaration[called.end() - 1:]), comment))
            comment, declaration = [], ""


# Of members that are templates, the declarations are what counts: definitions are not always recognised.
text = re.sub(r"^template <typename T>\ntemplate <typename U, typename>\n.*?^}$", as_empty_lines, text,
              flags=re.MULTILINE | re.DOTALL)
# A constraint in the place of a default is shown as the concept that it is.
text = re.sub(r"typename U, typename = detail::Where<(\w+)<U, T>>>", r"\1<T> U>", text)
text = re.sub(r"typename V, typename = detail::Where<(\w+)<V>>>", r"\1 V>", text)
text = re.sub(r"(typename \w+(?: = \w+)?), typename = detail::Where<(std::\w+<\w+>)>>", r"\1> requires \2", text)
text = re.sub(r"\[\[[\w:, ]+\]\] ?", "", text)
text = re.sub(r"(/// @copydoc [^\n]*,)\n *///( [^\n]*)", r"\1\2\n", text)
text = "\n".join(with_copies(text.split("\n")))
text = re.sub(r"^extern template[^;]*;", as_empty_lines, text, flags=re.MULTILINE)
text = re.sub(r"^static_assert\([^;]*\);", as_empty_lines, text, flags=re.MULTILINE)
text = re.sub(r"^(template <[^;{}]*>\n)(requires[^;{}]*\n)?struct (?:fmt|std)::formatter<[^;{}]*\{\s*\};", as_empty_lines, text,
              flags=re.MULTILINE)
# The text of the first member of a group is not the group's.
text = re.sub(r"^( *)/// (@[{}])$", r"\1/** \2 */", text, flags=re.MULTILINE)
sys.stdout.reconfigure(encoding="utf-8")
sys.stdout.write(text)
