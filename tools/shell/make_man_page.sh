#!/bin/sh
# Writes the manual page of mvfreq, made of what its commands say of themselves.
#   make_man_page.sh PROGRAM PAGE
set -eu
program=$1
version=$("$program" --version)
exec >"$2"

# Backslashes and minus signs stand for themselves; no help text begins with a point.
escaped() { sed -e 's/\\/\\e/g' -e 's/-/\\-/g'; }

# Positionals and options as tagged paragraphs, the example as it stands. In a help text, what an
# option does stands from column 31 on, below its name when that is long.
paragraphs() {
    awk '
        function flush() {
            gsub(/^ *| *$/, "", name)
            if (name != "") print ".TP\n.B " name "\n" text
            name = text = ""
        }
        /^(Positionals|Options):$/ { part = "options"; next }
        /^Example:$/ { flush(); print ".PP\nExample:\n.PP\n.nf"; part = "example"; next }
        part == "example" { print }
        part == "options" && /^ / {
            if (substr($0, 1, 30) !~ /[^ ]/) text = text (text == "" ? "" : " ") substr($0, 31)
            else { flush(); name = $0 }
            if (text == "" && length(name) > 30 && substr(name, 30, 1) == " ") {
                text = substr(name, 31)
                name = substr(name, 1, 30)
            }
        }
        END { flush(); if (part == "example") print ".fi" }'
}

cat <<HEAD
.TH MVFREQ 1 "" "$version" "User Commands"
.SH NAME
mvfreq \- filter pictures in the frequency domain
.SH SYNOPSIS
.B mvfreq
.I COMMAND
[\fIOPTIONS\fR] \fIinput.png output.png\fR
.br
.B mvfreq
.I COMMAND
[\fIOPTIONS\fR] \fB\-\-out\-dir\fR \fIresults/ input.png\fR ...
.SH DESCRIPTION
HEAD
"$program" --help | head -n 1 | escaped
echo .SH COMMANDS
for command in $("$program" --help | sed -n '/^Subcommands:/,/^$/s/^  \([a-z]*\) .*/\1/p'); do
    echo ".SS mvfreq $command"
    "$program" "$command" --help | head -n 1 | escaped
    "$program" "$command" --help | paragraphs | escaped
done
cat <<'TAIL'
.SH FILES
Output files appear whole or not at all. One that exists is replaced when mvfreq wrote it, and any
other one, an input too, by \-\-force. The name \- is standard input, or standard output.
The pictures of the examples come with the sources; Debian has them in
.IR /usr/share/doc/mvfreq\-doc .
.SH "EXIT STATUS"
0: done. 1: something failed. 2: bad arguments. 130: stopped by Ctrl\-C or SIGTERM.
TAIL
