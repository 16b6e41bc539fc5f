#!/bin/sh
# Compiles the help project of a folder, so that the same pages come to the same bytes.
#   compile.sh COMPILER FOLDER PROJECT COMPILED
# The compiler writes the time of the day in two places, and a number that its memory happened to hold: it
# runs with nothing of the environment, at addresses that are always the same where the system has that, in
# a folder whose name is always of one length, with a library whose place is told (or the list of all those
# that the machine has would move the addresses). For the times comes a sum of the file, by which a viewer
# tells one from another.
set -e
place=$(mktemp -d /tmp/help.XXXXXXXX)
trap 'rm -r "$place"' EXIT
cp "$2"/* "$place"
still="setarch -R"
$still true 2> /dev/null || still=
libraries=$(ldd "$1" | sed -n 's|.*libc\.so\.6 => \(.*\)/libc.*|\1|p')
(cd "$place" && $still env -i LD_LIBRARY_PATH="$libraries" "$1" "$3" > log 2>&1) ||
  { cat "$place/log" >&2 && exit 1; }
perl -0777 -i -pe '
  s/(\x03\0\0\0\x0a\0\x04\0).{4}/$1\0\0\0\0/s or die "no time where it was always\n";
  substr($_, 16, 4) = "\0\0\0\0";
  substr($_, 16, 4) = pack("N", unpack("%32C*", $_));' "$place/$4"
cp "$place/$4" "$2"
