#!/bin/sh
# Starts a program in a program directory of the user's own: start PROGRAM [OPTION...] [ARGUMENT...]
#
#   --directory DIR  the program directory (otherwise vantrel3 in the user's folder for data)
#   --prepare        only fill the directory; start nothing
#
# The editor and the engine find everything beside themselves and write there. So the directory
# gets copies of the installed programs and of the settings, templates and texts they come with.
# The programs are always those that are installed. Another file is put there when it is missing,
# and replaced while it is as it was put there; what the user changed stays.
set -u

program=$1
shift
installed=$(dirname "$(readlink -f "$0")")
shared=$(readlink -f "$installed/../../share/vantrel3")

# Ends with a message; on a desktop without a terminal to read it in, with a message box.
fail() {
  echo "$program: $1" >&2
  if [ "$program" = vantrel3 ] && [ ! -t 2 ] && [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    if command -v zenity >/dev/null; then
      zenity --error --no-markup --title=Vantorel --text="$1" 2>/dev/null
    elif command -v kdialog >/dev/null; then
      kdialog --title Vantorel --error "$1" 2>/dev/null
    elif command -v xmessage >/dev/null; then
      xmessage -center -title Vantorel "$1" 2>/dev/null
    fi
  fi
  exit 1
}

# Puts the file $1 at $2 in one step, with its time of change: the dates of a log hang on it.
put() {
  if ! error=$({ cp --preserve=timestamps -- "$1" "$2.shipping" && sync -- "$2.shipping" &&
    mv -fT -- "$2.shipping" "$2"; } 2>&1); then
    rm -f -- "$2.shipping"
    fail "The program directory $directory could not be filled. $error"
  fi
}

# One line for each file put into the program directory: its checksum, two blanks, its name.
record_line() { printf '%s  %s\n' "$(sha256sum <"$1" | cut -c1-64)" "$2"; }

stage_program() {
  if [ -f "$installed/$1" ] && ! cmp -s "$installed/$1" "$directory/$1"; then
    put "$installed/$1" "$directory/$1"
  fi
}

stage_editable() {
  target=$directory/$1
  if cmp -s "$shared/$1" "$target"; then return; fi
  if [ -e "$target" ] || [ -L "$target" ]; then
    if [ ! -f "$target" ] || [ -L "$target" ] || [ ! -r "$target" ]; then return; fi
    grep -Fqx "$(record_line "$target" "$1")" "$record" || return 0
  elif [ "$1" = games.log ] && [ -e "$directory/morvane.cfg" ]; then
    return # the sample has served
  fi
  error=$(mkdir -p -- "$(dirname "$target")" 2>&1) ||
    fail "The program directory $directory could not be filled. $error"
  # First on record: whenever this is interrupted, the file is one that is known.
  error=$({ record_line "$shared/$1" "$1" >>"$record"; } 2>&1) ||
    fail "The program directory $directory could not be filled. $error"
  put "$shared/$1" "$target"
}

# The settings come last: where they lie, all else does.
shared_files() {
  find "$shared" -type f ! -path "$shared/morvane.cfg" -printf '%P\n' | sort
  echo morvane.cfg
}

fill_directory() {
  error=$(mkdir -p -- "$directory" 2>&1) ||
    fail "The program directory $directory could not be made. $error"
  directory=$(cd -- "$directory" && pwd) || fail "The program directory cannot be entered."
  record=$directory/.shipped
  error=$(tee -a -- "$record" 2>&1 </dev/null) ||
    fail "The program directory $directory cannot be written to. $error"
  exec 9>>"$record"
  flock -w 60 9 || fail "The program directory $directory is being filled by another start."
  stage_program morvane.exe
  stage_program vantrel3
  while IFS= read -r name; do
    stage_editable "$name"
  done <<END
$(shared_files)
END
  exec 9>&-
}

directory=
prepare_only=
while [ $# -gt 0 ]; do
  case $1 in
    --directory)
      if [ -z "${2:-}" ]; then fail "--directory needs the name of a folder."; fi
      directory=$2
      shift
      ;;
    --prepare) prepare_only=1 ;;
    *) break ;;
  esac
  shift
done

if [ -z "$directory" ]; then
  case ${XDG_DATA_HOME:-} in
    /*) directory=$XDG_DATA_HOME/vantrel3 ;;
    *)
      [ -n "${HOME:-}" ] || fail "HOME is not set; name a program directory with --directory."
      directory=$HOME/.local/share/vantrel3
      ;;
  esac
fi

fill_directory
if [ -n "$prepare_only" ]; then exit 0; fi
# Folders named without a root are taken from here by the editor's dialogs.
cd -- "$directory" || fail "The program directory $directory cannot be entered."
[ -x "./$program" ] || fail "$directory/$program may not be executed there; is the disk mounted \
without the right to run programs (noexec)?"
exec "$directory/$program" "$@"
