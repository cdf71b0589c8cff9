#!/usr/bin/env python3
"""Gives Doxygen what the headers leave to the reader: the first line says what the file is, a doc
comment covers all declarations below it up to the next blank line, copying copies, moving moves, and
a macro declares what it declares."""

import re
import sys

MACROS = {
    "MVFREQ_ERROR_MEMBERS": """
      public:
        /** Without a text. */ {0}();
        /** Keeps a copy of `message`, or none for null. */ explicit {0}(const char* message);
        long errorNumber() const override;
        void suicideAndRethrow() override;
      protected:
        void dispatchSerialize(mvArchive& ar) override;
        /** Exchanges the part of this class. */ void serialize_(mvArchive& ar, unsigned char version);
      private:""",
    "MVFREQ_TRANSFORMS_OF": """
      /** What mfForwardFFT does. */
      void mf_ForwardFFT(const mvPelBuffer_const<{0}>& image, mvFrequencyBuffer& dst);
      /** What mfForwardFFT does. */
      void mf_ForwardFFT(const mvPelBuffer_const<{0}>& real, const mvPelBuffer_const<{0}>& imaginary,
                         mvFrequencyBuffer& dst);
      /** What mfInverseFFT and mfInverseFFTAngle do; `angle` may be null. */
      void mf_InverseFFT(mvFrequencyBuffer& buf, mvPelBuffer<{0}>& out, mvPelBuffer<double>* angle,
                         bool rescale, bool destroy);
      /** What mfInverseFFTQuadrant does. */
      void mf_InverseFFT(mvFrequencyBuffer& buf, mvPelBuffer<{0}>& out,
                         mvPelBuffer<unsigned char>& quadrant, bool rescale, bool destroy);""",
}

SPECIAL = [
    (re.compile(r"^(?:constexpr )?(\w+)\(const \1&( \w+)?\)"), "Copies."),
    (re.compile(r"^(?:constexpr )?(\w+)\(\1&&( \w+)?\)"), "Moves."),
    (re.compile(r"^(\w+)& operator=\(const \1&( \w+)?\)"), "Copies."),
    (re.compile(r"^(\w+)& operator=\(\1&&( \w+)?\)"), "Moves."),
]


USE = re.compile(rf"\s*({'|'.join(MACROS)})\(([\w ]+)\)$")
DEFINITION = re.compile(rf"#define ({'|'.join(MACROS)})\(.*?[^\\]$", re.MULTILINE | re.DOTALL)


def expanded(text):
    """The uses of the macros as what they declare, their definitions left out. Lines keep their
    numbers."""
    text = DEFINITION.sub(lambda definition: "\n" * definition[0].count("\n"), text)
    for line in text.splitlines():
        use = USE.match(line)
        yield " ".join(MACROS[use[1]].format(use[2]).split()) if use else line


def filed(text):
    """The opening line as the description of the file, without which Doxygen leaves functions out."""
    return re.sub(r"\A// (.*)", r"/** \1 @file */", text)


def special(declaration):
    return next((text for pattern, text in SPECIAL if pattern.match(declaration)), None)


class Cover:
    """The comment that covers the lines being read."""

    def __init__(self):
        self.text, self.used = [], False
        self.depth, self.open = 0, False  # of the declaration being read

    def line(self, line):
        """The line, with a comment where it starts a declaration that has none of its own."""
        bare = line.strip()
        if not self.open and (not bare or re.match(r"(public|protected|private):|[{}#]|// |/// ?@", bare)):
            self.__init__()
            return line
        if bare.startswith("///"):
            if self.used:
                self.__init__()
            self.text.append(bare[3:].strip())
            return line
        if re.match(r"(template <.*> )?(class|struct|enum)\b.*{$", bare):
            self.__init__()
            return line
        starts = not self.open
        self.depth += sum(bare.count(c) for c in "({") - sum(bare.count(c) for c in ")}")
        self.open = self.depth > 0 or not re.search(r"[;}]\s*(///?.*)?$", bare)
        if not starts:
            return line
        repeats, self.used = self.used, True
        own = self.text and not repeats
        comment = None if own else " ".join(self.text) or special(bare)
        return f"/** {comment} */ {line}" if comment and "///<" not in line else line


def main():
    cover = Cover()
    with open(sys.argv[1], encoding="utf-8") as header:
        for line in expanded(filed(header.read())):
            print(cover.line(line))


if __name__ == "__main__":
    main()
