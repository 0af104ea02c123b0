# SPDX-FileCopyrightText: The vantix authors
# SPDX-License-Identifier: MIT
#
# Filters a header for Doxygen: what stands before a group of members, between "//! @{" and
# "//! @}", is said of each of them; members that only reimplement another class's say so.

function indent_of(line) {
  match(line, /^ */)
  return substr(line, 1, RLENGTH)
}

# A declaration begins here: no comment, and the line before ended one.
function begins(line) {
  return isEnded && line ~ /[^ ]/ && line !~ /^ *(\/\/|#|public|protected|private|Q_OBJECT|[{}])/
}

/^ *\/\/! @\{$/ {
  group = said
  said = ""
  isGrouped = 1
  isEnded = 1
  next
}
/^ *\/\/! @\}$/ {
  isGrouped = 0
  group = said = ""
  isEnded = 1
  next
}
/^ *\/\/!</ || !/^ *\/\/!/ {
  if (begins($0)) {
    if (isGrouped && said == "")
      said = group != "" ? group : indent_of($0) "//! See the one before.\n"
    if (said == "" && $0 ~ /override/)
      said = indent_of($0) "//! Reimplemented.\n"
  }
  printf "%s", said
  said = ""
  print
  isEnded = $0 ~ /[;{}:]( *\/\/.*)?$/ || $0 !~ /[^ ]/ || $0 ~ /^ *\/\//
  next
}
{
  said = said $0 "\n"
}
END {
  printf "%s", said
}
