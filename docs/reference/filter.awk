# What Doxygen reads of a header: parameters that stand in comments get their names, and an override that says
# nothing of its own is left out, since what it does is said where it overrides. Lines keep their numbers.
function flush(hide,    i)
{
  for (i = 1; i <= count; i++)
    print hide ? "" : held[i]
  count = 0
}

{
  gsub(/\r/, "")
  while (match($0, /\/\*[A-Za-z]+\*\//)) # int Find(const wchar_t* /*text*/)
    $0 = substr($0, 1, RSTART - 1) substr($0, RSTART + 2, RLENGTH - 4) substr($0, RSTART + RLENGTH)
}

count == 0 && /^[ \t]*(\/\/|#|$)/ { # between statements
  isTold = /^[ \t]*\/\/\//
  print
  next
}

{
  held[++count] = $0
  if (/[;{}:][ \t]*(\/\/.*)?$/) {
    flush(/ override;$/ && !isTold)
    isTold = 0
  }
}

END { flush(0) }
