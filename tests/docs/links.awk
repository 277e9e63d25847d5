# Links that lead nowhere. Of pages in Markdown: `awk -f links.awk PAGE…`; of a built site, in its folder:
# `awk -v site=1 -f links.awk *.html`. A site may also not take anything from a network.
function complain(target)
{
  print FILENAME ":" FNR ": " target " leads nowhere"
  status = 1
}

function exists(path)
{
  if (!(path in known))
    known[path] = system("test -e '" path "'") == 0
  return known[path]
}

# As the well-known hosts of Markdown make them.
function slug(heading)
{
  heading = tolower(heading)
  gsub(/[^a-z0-9 _-]/, "", heading)
  gsub(/ /, "-", heading)
  return heading
}

function headings(path,    line, inFence)
{
  if (path in isRead)
    return
  isRead[path] = 1
  while ((getline line < path) > 0) {
    if (line ~ /^```/)
      inFence = !inFence
    else if (!inFence && sub(/^#+ +/, "", line))
      anchors[path "#" slug(line)] = 1
  }
  close(path)
}

function markdown(line,    target, place, folder)
{
  gsub(/`[^`]*`/, "", line)
  folder = FILENAME
  if (!sub(/[^\/]*$/, "", folder))
    folder = ""
  while (match(line, /\]\([^()]*\)/)) {
    target = substr(line, RSTART + 2, RLENGTH - 3)
    line = substr(line, RSTART + RLENGTH)
    links++
    if (target ~ /^[a-z]+:/)
      continue
    place = target
    sub(/#.*/, "", place)
    place = place == "" ? FILENAME : folder place
    if (!exists(place)) {
      complain(target)
    } else if (target ~ /#/) {
      headings(place)
      if (!(place "#" substr(target, index(target, "#") + 1) in anchors))
        complain(target)
    }
  }
}

function html(line,    rest, kind, target)
{
  rest = line
  while (match(rest, /(id|name)="[^"]*"/)) {
    target = substr(rest, RSTART, RLENGTH)
    rest = substr(rest, RSTART + RLENGTH)
    sub(/^[a-z]*="/, "", target)
    anchors[FILENAME "#" substr(target, 1, length(target) - 1)] = 1
  }
  rest = line
  while (match(rest, /(href|src|data)="[^"]*"/)) {
    target = substr(rest, RSTART, RLENGTH - 1)
    kind = target
    rest = substr(rest, RSTART + RLENGTH)
    sub(/^[a-z]*="/, "", target)
    sub(/=.*/, "", kind)
    links++
    if (target ~ /^(https?:)?\/\//) {
      if (kind != "href" || line ~ /<link /)
        complain(target " (from a network)")
    } else if (target !~ /^(javascript|data|mailto):/ && target != "") {
      wanted[target] = FILENAME ":" FNR
    }
  }
}

!site && /^```/ { inFence = !inFence }
!site && !inFence { markdown($0) }
site { html($0) }
FNR == 1 { inFence = 0; pages[FILENAME] = 1 }

END {
  for (target in wanted) {
    place = target
    sub(/#.*/, "", place)
    sub(/\?.*/, "", place)
    anchor = target ~ /#/ ? substr(target, index(target, "#") + 1) : ""
    split(wanted[target], at, ":")
    if (place == "")
      place = at[1]
    if (!(place in pages) && !exists(place) || anchor != "" && place in pages && !(place "#" anchor in anchors)) {
      print wanted[target] ": " target " leads nowhere"
      status = 1
    }
  }
  if (links == 0) {
    print "There is no link at all"
    status = 1
  }
  exit status
}
