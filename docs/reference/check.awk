# What Doxygen lets pass, read from its XML: enumeration values, and parameters of signals and slots, that
# nobody has documented.
function text(name) # what stands between <name> and </name> on a line
{
  if (!match($0, "<" name ">[^<]*</" name ">"))
    return ""
  return substr($0, RSTART + length(name) + 2, RLENGTH - 2 * length(name) - 5)
}

function complain(what)
{
  print where ": " what
  status = 1
}

/<compoundname>/ { where = text("compoundname") }

/<enumvalue / { value = ""; isPrivate = /prot="private"/; isTold = 0 }
/<memberdef / { isWatched = /kind="(signal|slot)"/ && !/prot="private"/; member = ""; split("", given); split("", told) }
/<\/enumvalue>/ {
  if (!isTold && !isPrivate)
    complain("the value " value " is not documented")
  value = ""
  seen++
}
/<name>/ && value == "" { value = text("name") }
/<name>/ { member = member == "" ? text("name") : member }
/<para>/ { isTold = 1 }
/<declname>/ { given[text("declname")] = 1 }
/<parametername/ { sub(/ direction="[a-z]*"/, ""); told[text("parametername")] = 1 }
/<\/memberdef>/ {
  if (isWatched) {
    for (name in given)
      if (!(name in told))
        complain("the parameter " name " of " member " is not documented")
  }
}

END {
  if (!seen) {
    print "No enumeration value was found at all"
    exit 1
  }
  exit status
}
