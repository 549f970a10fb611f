#!/usr/bin/env bash
# Tries what a new user does: makes a minimal Debian 12 in a temporary folder, copies this checkout into it
# (uncommitted changes included) and runs the commands of README.md there, so that no package of this
# machine can help. The last line is the count of ./test.sh. Root is needed, and about 45 minutes at most.
#   scripts/fresh.sh            the commands in their order
#   scripts/fresh.sh --reverse  the other way round
#   scripts/fresh.sh --bench    ./bench.sh --quick after them
# Where mounting is refused the commands run on this machine as it is, and a line says so.
set -u
cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit 2
SUITE=bookworm
LIMIT=2500 # seconds, for the commands

reverse=0
bench=0
inside=''
for option in "$@"; do
  case $option in
    --reverse) reverse=1 ;;
    --bench) bench=1 ;;
    --inside=*) inside=${option#*=} ;; # how this script calls itself among mounts of its own
    *) sed -n '2,8s/^# \{0,1\}//p' "${BASH_SOURCE[0]}" >&2; exit 2 ;;
  esac
done

say() { printf 'fresh: %s\n' "$*"; }

# The shell lines of the first example of README.md, without their comments.
mapfile -t commands < <(sed -n '/^```sh$/,/^```$/{/^```/d;s/ *#.*//;p}' README.md | head -n 2)
if [ ${#commands[@]} != 2 ] || [[ ${commands[0]} != ./qel* ]] || [ "${commands[1]}" != ./test.sh ]; then
  say "README.md does not begin with the two commands"
  exit 2
fi
[ $reverse = 0 ] || commands=("${commands[1]}" "${commands[0]}")
[ $bench = 0 ] || commands+=("./bench.sh --quick")

# ---- running the commands: COMMAND... is what a command line is handed to

times=()
count='0 passed, 1 failed' # until ./test.sh has said better
run_all() {
  local line status=0 code start log
  log=$(mktemp)
  for line in "${commands[@]}"; do
    start=$SECONDS
    [ -z "$inside" ] || [ "$start" -lt $LIMIT ] || { status=1; break; }
    say "$line"
    # By way of a file: what a command leaves running would hold up a pipe.
    : >"$log"
    "$@" "$line" >>"$log" 2>&1 </dev/null &
    tail -f -n +1 --pid=$! "$log"
    wait $!
    code=$?
    [ "$code" = 0 ] || status=1
    times+=("$line ended with $code after $((SECONDS - start)) s")
    [ "$line" != ./test.sh ] || count=$(grep -E '^[0-9]+ passed, [0-9]+ failed$' "$log" | tail -n 1)
  done
  rm -f "$log"
  return $status
}
report() { # STATUS [REMARK]
  [ ${#times[@]} = 0 ] || printf 'fresh: %s\n' "${times[@]}"
  [ -z "${2:-}" ] || say "$2"
  printf '%s\n' "${count:-0 passed, 1 failed}"
  exit "$1"
}

# ---- inside: in mounts and processes of its own, which end with it whatever happens

in_root() {
  chroot "$inside" env -i HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin ${TERM:+"TERM=$TERM"} \
    ${http_proxy:+"http_proxy=$http_proxy"} ${https_proxy:+"https_proxy=$https_proxy"} \
    ${no_proxy:+"no_proxy=$no_proxy"} bash -c "cd /root/checkout && $1"
}
limit() {
  sleep $LIMIT
  say "stopped after $LIMIT s"
  kill -KILL -1 # all but the first process, which goes on to report
}
if [ -n "$inside" ]; then
  { mount -t proc proc "$inside/proc" && mount --rbind /dev "$inside/dev"; } || report 1 "mounting failed"
  limit &
  status=0
  run_all in_root || status=1
  report $status
fi

# ---- outside: makes the root, and removes it

can_mount() { unshare --mount --pid --fork --mount-proc true 2>/dev/null; }
have_tools() {
  source scripts/setup.sh
  qel_need mmdebstrap mmdebstrap
  qel_need git git
  qel_install
}
# Where this machine gets its own packages from.
mirror() {
  local found
  found=$(apt-get indextargets --format "\$(SITE) \$(RELEASE) \$(COMPONENT)" 'Created-By: Packages' 2>/dev/null |
    sed -n "s/ $SUITE main\$//p" | head -n 1)
  echo "${found:-http://deb.debian.org/debian}"
}
make_root() { # FOLDER: the main suite alone, reached the way in which this machine reaches it
  local line options=()
  while read -r line; do options+=("--aptopt=$line"); done < <(apt-config dump |
    grep -E '^Acquire::(.*[Pp]roxy.*|Retries|Check-Valid-Until|Check-Date) ".+";')
  mmdebstrap --quiet --variant=minbase "${options[@]}" --dpkgopt=force-unsafe-io $SUITE "$1" \
    "deb $(mirror) $SUITE main" || return 1
  cp -L /etc/resolv.conf /etc/hosts "$1/etc/"
}
# The files that git has or would take, as a repository of their own.
copy_checkout() { # FOLDER
  local git=(git -c safe.directory='*' -c user.name=fresh -c user.email=fresh@localhost)
  mkdir -p "$1"
  "${git[@]}" ls-files -z -co --exclude-standard | while IFS= read -r -d '' file; do
    [ -e "$file" ] || [ -L "$file" ] && printf '%s\0' "$file"
  done | tar -c --null -T - | tar -x --no-same-owner -C "$1" || return 1
  (cd "$1" && git init -q && git add -A && "${git[@]}" commit -q -m checkout)
}

run_here() { bash -c "$1"; }
without_root() { # REASON
  local status=0 remark="$1, so the commands run on this machine as it is"
  say "$remark"
  run_all run_here || status=1
  rm -f tank-farm.png
  report $status "$remark"
}

can_mount || without_root "mounting is refused"
(have_tools) || without_root "mmdebstrap cannot be installed"

work=$(mktemp -d "${TMPDIR:-/var/tmp}/qel-fresh.XXXXXX")
chmod 755 "$work" # apt's own user reads there
child=''
end() {
  trap '' INT TERM
  # What runs inside dies with it, a moment later, and its mounts with that.
  [ -z "$child" ] || { kill -KILL "$child"; wait "$child"; } 2>/dev/null
  for _ in 1 2 3 4 5; do
    if grep -q " $work/" /proc/mounts; then say "something is mounted in $work, which stays"; return; fi
    rm -rf --one-file-system "$work" 2>/dev/null && return
    sleep 1
  done
  say "$work could not be removed"
}
trap end EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

start=$SECONDS
make_root "$work/root" || without_root "mmdebstrap failed"
copy_checkout "$work/root/root/checkout" || report 1 "the checkout cannot be copied"
say "a minimal Debian 12 from $(mirror) in $((SECONDS - start)) s"

arguments=("--inside=$work/root")
[ $reverse = 0 ] || arguments+=(--reverse)
[ $bench = 0 ] || arguments+=(--bench)
# In the background, since a shell heeds signals only while it waits.
unshare --mount --propagation private --pid --fork --kill-child bash scripts/fresh.sh "${arguments[@]}" &
child=$!
wait "$child"
status=$?
child=''
exit $status
