"""How the report writes numbers and tables."""

import math
import re

UNMEASURED = "–"


def number(value):
    """Three significant digits, without an exponent."""
    if value is None:
        return UNMEASURED
    if value >= 100:
        return f"{value:,.0f}"
    return f"{value:.1f}" if value >= 10 else f"{value:.2f}"


def times(value):
    """A ratio; one just below 1 never reads as 1."""
    if value is None:
        return UNMEASURED
    text = f"{value:.1f}" if value >= 10 else f"{value:.2f}"
    return f"{math.floor(value * 1000) / 1000:.3f}" if value < 1 and text == "1.00" else text


def marked(value):
    """A ratio; those below 1 stand out."""
    return f"**{times(value)}**" if value is not None and value < 1 else times(value)


def table(header, lines):
    """A Markdown table whose first column is text and whose others are numbers."""
    output = ["| " + " | ".join(header) + " |", "|---|" + "---:|" * (len(header) - 1)]
    output += ["| " + " | ".join(cell.replace("|", "\\|") for cell in line) + " |" for line in lines]
    return "\n".join(output) + "\n"


def warned(text, warning):
    """The same page with a warning in front of every table; without a warning, the page as it is."""
    if not warning:
        return text
    return re.sub(r"(?m)^(?=\|.*\|\n\|---)", lambda _: f"**{warning}**\n\n", text)
