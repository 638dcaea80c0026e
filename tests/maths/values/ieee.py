"""IEEE-754 arithmetic in exact fractions: an independent model of what `float` and `double` compute.

A value is a bit pattern. Every operation is done in exact rational arithmetic and rounded once, to nearest, ties to
even. Infinities and NaNs are handled only as far as the scripts beside this one need them.
"""
from fractions import Fraction


class Format:
    """A binary format: the width of a pattern, of its exponent and of its fraction."""

    def __init__(self, name, width, fraction_bits):
        self.name = name
        self.width = width
        self.fraction_bits = fraction_bits
        self.exponent_bits = width - 1 - fraction_bits
        self.bias = (1 << (self.exponent_bits - 1)) - 1
        self.sign = 1 << (width - 1)
        self.infinity = ((1 << self.exponent_bits) - 1) << fraction_bits

    def is_nan(self, bits):
        return (bits & (self.sign - 1)) > self.infinity

    def is_infinite(self, bits):
        return (bits & (self.sign - 1)) == self.infinity

    def is_finite(self, bits):
        return (bits & (self.sign - 1)) < self.infinity

    def value(self, bits):
        """The exact value of a finite pattern."""
        magnitude = bits & (self.sign - 1)
        exponent = magnitude >> self.fraction_bits
        fraction = magnitude & ((1 << self.fraction_bits) - 1)
        if exponent:
            fraction |= 1 << self.fraction_bits
        else:
            exponent = 1
        result = Fraction(fraction) * Fraction(2) ** (exponent - self.bias - self.fraction_bits)
        return -result if bits & self.sign else result

    def round(self, exact, zero_sign=0):
        """The pattern nearest to an exact value; an exact zero takes the sign bit given."""
        if exact == 0:
            return self.sign if zero_sign else 0
        sign = self.sign if exact < 0 else 0
        exact = abs(exact)
        exponent = exact.numerator.bit_length() - exact.denominator.bit_length()
        if Fraction(2) ** exponent > exact:
            exponent -= 1
        exponent = max(exponent, 1 - self.bias)  # subnormals share the lowest exponent
        scaled = exact / Fraction(2) ** (exponent - self.fraction_bits)
        whole = scaled.numerator // scaled.denominator
        rest = scaled - whole
        if rest > Fraction(1, 2) or (rest == Fraction(1, 2) and whole & 1):
            whole += 1
        pattern = ((exponent + self.bias - 1) << self.fraction_bits) + whole
        return sign | min(pattern, self.infinity)

    def add(self, a, b):
        both_negative = (a & self.sign) and (b & self.sign)
        return self.round(self.value(a) + self.value(b), both_negative)

    def sub(self, a, b):
        return self.add(a, b ^ self.sign)

    def mul(self, a, b):
        return self.round(self.value(a) * self.value(b), (a ^ b) & self.sign)

    def div(self, a, b):
        return self.round(self.value(a) / self.value(b), (a ^ b) & self.sign)

    def hex(self, bits):
        return "0x%0*X" % (self.width // 4, bits)


FLOAT = Format("float", 32, 23)
DOUBLE = Format("double", 64, 52)
