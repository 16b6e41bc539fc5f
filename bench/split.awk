# Splits the lines of an exchange file into their columns, holders, parcels and subparcels each into a file of
# its own: what a program does at least that makes tables of them, and so the yardstick of the way out. The
# columns are written out one by one: a loop over their widths takes three times as long, and a slow yardstick
# flatters.
BEGIN { OFS = "\t" }
{ type = substr($0, 1, 2) }
type == "TL" {
  print substr($0, 3, 3), substr($0, 6, 3), substr($0, 12, 7), substr($0, 19, 5), substr($0, 24, 60),
    substr($0, 84, 1), substr($0, 85, 8), substr($0, 93, 1), substr($0, 94, 1), substr($0, 95, 2),
    substr($0, 97, 3), substr($0, 100, 5), substr($0, 105, 25), substr($0, 130, 4), substr($0, 134, 11),
    substr($0, 145, 4), substr($0, 149, 25), substr($0, 174, 2), substr($0, 176, 3), substr($0, 179, 3),
    substr($0, 182, 5) > (out "holders")
}
type == "PR" {
  print substr($0, 3, 3), substr($0, 6, 3), substr($0, 12, 2), substr($0, 14, 3), substr($0, 17, 5),
    substr($0, 22, 5), substr($0, 27, 2), substr($0, 29, 2), substr($0, 31, 12), substr($0, 43, 4),
    substr($0, 47, 7), substr($0, 54, 2), substr($0, 56, 10), substr($0, 66, 3), substr($0, 69, 3),
    substr($0, 72, 5), substr($0, 77, 1) > (out "parcels")
}
type == "SP" {
  print substr($0, 3, 3), substr($0, 6, 3), substr($0, 12, 2), substr($0, 14, 3), substr($0, 17, 5),
    substr($0, 22, 4), substr($0, 26, 1), substr($0, 27, 2), substr($0, 29, 4), substr($0, 33, 5),
    substr($0, 38, 2), substr($0, 40, 2), substr($0, 42, 2), substr($0, 44, 2), substr($0, 46, 2),
    substr($0, 48, 2), substr($0, 50, 7), substr($0, 57, 7) > (out "subparcels")
}
type == "SC" {
  print substr($0, 3, 3), substr($0, 6, 3), substr($0, 12, 2), substr($0, 14, 3), substr($0, 17, 5),
    substr($0, 22, 4), substr($0, 26, 3), substr($0, 29, 14), substr($0, 43, 3), substr($0, 46, 3),
    substr($0, 49, 2), substr($0, 51, 6), substr($0, 57, 4), substr($0, 61, 1), substr($0, 62, 5),
    substr($0, 67, 4), substr($0, 71, 1), substr($0, 72, 1), substr($0, 73, 1),
    substr($0, 74, 3) > (out "subparcels")
}
