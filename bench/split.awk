# Splits the lines of an exchange file into their columns, by tables of widths, holders, parcels and
# subparcels each into a file of its own: what a program does at least that makes tables of them, and so
# the yardstick of the way out.
function columns(widths, count,    i, at, row) {
  at = 12
  row = substr($0, 3, 3) "\t" substr($0, 6, 3)
  for (i = 1; i <= count; ++i) {
    row = row "\t" substr($0, at, widths[i])
    at += widths[i]
  }
  return row
}
BEGIN {
  holders = split("7 5 60 1 8 1 1 2 3 5 25 4 11 4 25 2 3 3 5", holder, " ")
  parcels = split("2 3 5 5 2 2 12 4 7 2 10 3 3 5 1", parcel, " ")
  lands = split("2 3 5 4 1 2 4 5 2 2 2 2 2 2 7 7", land, " ")
  builts = split("2 3 5 4 3 14 3 3 2 6 4 1 5 4 1 1 1 3", built, " ")
}
{ type = substr($0, 1, 2) }
type == "TL" { print columns(holder, holders) > (out "holders") }
type == "PR" { print columns(parcel, parcels) > (out "parcels") }
type == "SP" { print columns(land, lands) > (out "subparcels") }
type == "SC" { print columns(built, builts) > (out "subparcels") }
