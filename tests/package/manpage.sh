#!/usr/bin/env bash
# The manual page of lumora-cli against the program's own usage text: every option of the
# usage line and every command line of the usage is in the page, and every command the page
# describes is one the program knows. A command or option added, renamed or dropped in one
# place and not the other fails here.
set -euo pipefail
cli="$1"
page="$2"

usage="$("$cli" --help)"
# The page as text: font changes dropped, "\-" a plain minus.
text="$(sed -e 's/\\f[BIRP]//g' -e 's/\\-/-/g' "$page")"
missing=0
has() { grep -qF -- "$1" <<<"$text" || { echo "not in $page: $1" >&2; missing=1; }; }

# The options of the usage line, each with its value name.
read -r -a words <<<"$(head -n 1 <<<"$usage" | sed -e 's/^usage: lumora-cli //' -e 's/\[//g; s/\]//g')"
for ((i = 0; i < ${#words[@]}; i++)); do
  word="${words[i]}"
  [[ "$word" == -* ]] || continue
  next="${words[i + 1]:-}"
  if [[ "$next" =~ ^[A-Z]+$ && "$next" != COMMAND ]]; then has "$word $next"; else has "$word"; fi
done

# The commands: each line "  name OPERANDS   description" gives its syntax, as the page's
# headings write it.
commands=()
while IFS= read -r line; do
  syntax="$(sed -E 's/^  ([a-z]+( [^ ]+)*)  +.*$/\1/' <<<"$line")"
  has "$syntax"
  commands+=("${syntax%% *}")
done < <(grep -E '^  [a-z]+( |$)' <<<"$usage")
((${#commands[@]} > 0)) || { echo "no commands found in the usage text" >&2; exit 1; }

# The commands the page describes: the heading after each .TP of its COMMANDS section.
described="$(awk '/^\.SH COMMANDS/ {on = 1; next} /^\.SH/ {on = 0}
                  on && tp {print; tp = 0} on && /^\.TP/ {tp = 1}' "$page" |
             sed -e 's/\\f[BIRP]//g' | awk '{print $1}')"
for name in $described; do
  printf '%s\n' "${commands[@]}" | grep -qx -- "$name" ||
    { echo "$page describes \"$name\", which lumora-cli does not know" >&2; missing=1; }
done

((missing == 0)) && echo "the manual page matches the usage of ${#commands[@]} commands"
exit "$missing"
