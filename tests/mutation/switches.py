"""The text of a header in which many changes stand side by side, each behind a switch that is off unless it is asked for.

An expression `a < b` that may become `a <= b` (the 7th change) is written as `(BvChanged(7) ? (a <= b) : (a < b))`, and a
result as `if (BvChanged(7)) return {}; else return ...`. So all changes are compiled at once, and one program runs them all,
one after the other. What a program never gets to, no change of it can alter: a program says which switches it came by.
"""
import collections
import re

# One change, as a switch has it: its number, the place of the whole expression or statement and that of what is replaced.
Switch = collections.namedtuple("Switch", "number whole start end new")
Span = collections.namedtuple("Span", "start end numbers")

PRELUDE = """#pragma once
#include <cstdio>
#include <cstdlib>

struct BvChanges
{
    int on = 0;
    unsigned char reached[%d] = {};

    BvChanges() noexcept
    {
        if (char const* const number = std::getenv("BV_CHANGE"))
            on = std::atoi(number);
    }

    ~BvChanges()
    {
        char const* const path = std::getenv("BV_CHANGES_REACHED");
        if (std::FILE* const file = path ? std::fopen(path, "a") : nullptr)
        {
            for (unsigned i = 0; i < sizeof reached; ++i)
                if (reached[i])
                    std::fprintf(file, "%%u\\n", i);
            std::fclose(file);
        }
    }
};
inline BvChanges bvChanges;

// Off in what the compiler evaluates itself.
[[gnu::always_inline]] constexpr bool BvChanged(int number) noexcept
{
    if (__builtin_is_constant_evaluated())
        return false;
    bvChanges.reached[number] = 1;
    return bvChanges.on == number;
}
"""


def prelude(count):
    """What has to be included before all else: the switches 1 to count."""
    return PRELUDE % (count + 1)


def switched(source, switches):
    """A text with switches in it, and the places for which one of them may be to blame, the inner ones after the outer."""
    groups = {}
    for switch in switches:
        groups.setdefault(switch.whole, []).append(switch)
    order = sorted(groups, key=lambda whole: (whole[0], -whole[1]))
    spans, pieces, length = [], [], 0

    def put(text):
        nonlocal length
        pieces.append(text)
        length += len(text)

    def put_range(start, end, inner):
        while inner and inner[0][0] < end:
            whole, *rest = inner
            put(source[start:whole[0]])
            nested = [other for other in rest if other[1] <= whole[1]]
            put_group(whole, nested)
            start = whole[1]
            inner = [other for other in rest if other[0] >= start]
        put(source[start:end])

    def put_group(whole, inner):
        begin, at = length, len(spans)
        spans.append(None)
        is_result = re.match(rb"return\b", source[whole[0]:whole[1]])
        put(b"" if is_result else b"(")
        for switch in groups[whole]:
            changed = source[whole[0]:switch.start] + switch.new + source[switch.end:whole[1]]
            start = length
            put(b"if (BvChanged(%d)) %s; else " % (switch.number, changed) if is_result
                else b"BvChanged(%d) ? (%s) : " % (switch.number, changed))
            spans.append(Span(start, length, [switch.number]))
        put(b"" if is_result else b"(")
        put_range(*whole, inner)
        put(b"" if is_result else b"))")
        spans[at] = Span(begin, length, [switch.number for switch in groups[whole]])

    put_range(0, len(source), order)
    return b"".join(pieces), spans


def blamed(text, spans, line, column):
    """The switches to blame for an error at a line and column (both from 1 on) of a text: the innermost ones around it."""
    at = place(text, line, column)
    around = [span for span in spans if span.start <= at < span.end]
    return around[-1].numbers if around else []


def nearest(text, spans, line, column):
    """The switches to blame for an error at a line and column outside of all of them."""
    at = place(text, line, column)
    return min(spans, key=lambda span: max(span.start - at, at - span.end)).numbers if spans else []


def place(text, line, column):
    """Where a line and column of a text is."""
    return sum(len(before) + 1 for before in text.split(b"\n")[:line - 1]) + column - 1


def is_nested(wholes):
    """Whether of two places that are changed, either the one lies in the other, or they have nothing in common."""
    open_ = []
    for start, end in sorted(wholes, key=lambda whole: (whole[0], -whole[1])):
        while open_ and open_[-1] <= start:
            open_.pop()
        if open_ and end > open_[-1]:
            return False
        open_.append(end)
    return True
