#!/usr/bin/env bash
# The pages name what a host meets: every class with signals, every signal, every colour of the skin; each page on
# a control has its parts; no link leads nowhere. pages.sh SOURCE
set -euo pipefail
cd "$1"
failed=0
fail() {
  echo "$*"
  failed=1
}
pages=(docs/*.md docs/controls/*.md)

named() { grep -qw -- "$1" "${pages[@]}"; }

# The pages on a control: the ones that begin with its name. A part of a control is on the page that names it, and
# what several controls derive from on the page of each.
pages_of() {
  local found derived
  found=$(awk -v name="\`$1\`" 'FNR == 3 && index($0, name) { print FILENAME }' docs/controls/*.md)
  [ -n "$found" ] || for derived in $(sed -nE "s/^class KV_API (\w+) : public $1\>.*/\1/p" include/*.h); do
    found+=" $(pages_of "$derived")"
  done
  [ -n "${found// /}" ] || found=$(grep -lF "\`$1\`" docs/controls/*.md || true)
  printf '%s\n' $found
}

# What stands between Q_SIGNALS and the next section or the end of a class, with the name of that class.
signals=$(awk '/^class KV_API/ { name = $3 } /^Q_SIGNALS:/ { on = 1; next } /^[a-z]*:|^};/ { on = 0 }
  on && match($0, /void [A-Z][A-Za-z]*/) { print name, substr($0, RSTART + 5, RLENGTH - 5) }' include/*.h)
[ "$(wc -l <<<"$signals")" -ge 40 ] || fail "next to no signals were found"
while read -r class signal; do
  of_class=$(pages_of "$class")
  [ -n "$of_class" ] || fail "No page is on $class"
  for page in $of_class; do
    grep -qE "\`$signal[\`(]" "$page" || fail "$page does not name the signal $signal of $class"
  done
done <<<"$signals"

# A class with the meta-object macro is one that a host creates or derives from; what several share is no page's.
shared=' CKvStatic CKvCaptionBar CKvTextListBase '
classes=$(awk '/^class KV_API/ { name = $3 } /Q_OBJECT/ { print name }' include/*.h)
for class in $classes; do
  [[ $shared == *" $class "* ]] || named "$class" || fail "No page names the class $class"
done

for header in include/Kv*.h; do
  name=$(basename "$header")
  [ "$name" = KvGuiAdvCtrls.h ] || grep -qF "\"$name\"" include/KvGuiAdvCtrls.h || fail "KvGuiAdvCtrls.h lacks $name"
done

colours=$(grep -rhoE 'L"ke[A-Za-z]+"' applog chrome color curves layout platform text | grep -oE 'ke[A-Za-z]+' | sort -u)
for colour in $colours; do
  grep -qF "\`$colour\`" docs/skins.md || fail "docs/skins.md lacks the colour $colour"
done
for colour in $(grep -oE '`ke[A-Za-z]+`' docs/skins.md | tr -d '`' | sort -u); do
  grep -qx "$colour" <<<"$colours" || fail "No control asks for $colour, which docs/skins.md names"
done

for page in docs/controls/*.md; do
  for part in '^!\[' '^## Messages$' '^## (Mouse and k|K)eyboard$' '^## Operations$' '^## Example$'; do
    grep -qE "$part" "$page" || fail "$page lacks $part"
  done
  grep -qF "controls/$(basename "$page")" docs/index.md || fail "docs/index.md does not lead to $page"
done
for picture in docs/images/*.png; do
  case $picture in *-150.png | */titler*) continue ;; esac
  grep -qF "$(basename "$picture")" "${pages[@]}" || fail "No page shows $picture"
done

awk -f tests/docs/links.awk ./*.md bench/README.md examples/README.md titler/README.md tools/README.md "${pages[@]}" || failed=1
exit $failed
