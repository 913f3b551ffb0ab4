#!/bin/sh
# Repeats a new user's first steps on the smallest Debian 12 there is: makes a
# minbase root with debootstrap (only git, ca-certificates and sudo added),
# clones the committed branch of this repository into it and runs one of the
# README's commands there as root. Uncommitted files are left behind on
# purpose, so that they cannot hide a missing set-up step.
#
# Usage: tools/debian-root.sh test|run [--root DIR] [--repo PATH] [--reuse]
#                                      [--timeout SECONDS]
#   test       runs scripts/test.sh; its exit status is the script's
#   run        runs scripts/run.sh on a private X server (Xvfb in the root)
#              and succeeds once the game prints its "[video]" line
#   --root     where the root goes (default /var/tmp/tessellatrix-root); a
#              root this script made there before is removed first
#   --repo     the repository to clone (default: the one holding this script)
#   --reuse    keeps a root made before with its installed packages and only
#              clones anew (quicker, but no longer a fresh system)
#   --timeout  how long "run" waits for the game to show up (default 3600)
#
# The root uses the Debian archive this machine's apt already uses (read from
# /etc/apt/sources.list and /etc/apt/sources.list.d). Needs root.
set -eu

suite=bookworm
marker=.tessellatrix-debian-root
inner=/root/tessellatrix
path=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin

die() { echo "debian-root: $*" >&2; exit 2; }
say() { echo "debian-root: $*" >&2; }

command=${1:-}
case $command in
  test|run) shift ;;
  *) die "usage: $0 test|run [--root DIR] [--repo PATH] [--reuse] [--timeout SECONDS]" ;;
esac
root=/var/tmp/tessellatrix-root
repo=$(cd "$(dirname "$0")/.." && pwd)
reuse=no
timeout=3600
while [ $# -gt 0 ]; do
  case $1 in
    --root) root=${2:?--root needs a folder}; shift 2 ;;
    --repo) repo=${2:?--repo needs a path}; shift 2 ;;
    --reuse) reuse=yes; shift ;;
    --timeout) timeout=${2:?--timeout needs seconds}; shift 2 ;;
    *) die "unknown argument: $1" ;;
  esac
done

[ "$(id -u)" -eq 0 ] || die "must run as root (debootstrap, chroot and mount need it)"
case $root in /*) ;; *) root=$(pwd)/$root ;; esac
root=${root%/}
[ "$root" != "" ] && [ "$root" != "/" ] || die "refusing to use / as the root"
git -C "$repo" rev-parse --git-dir >/dev/null 2>&1 || die "$repo is not a git repository"

# --- the archive this machine uses ------------------------------------------

# Prints "URI SUITE" for every enabled binary source, one-line and deb822.
apt_sources() {
  for f in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
    [ -f "$f" ] || continue
    awk '$1 == "deb" {
      i = 2
      if ($i ~ /^\[/) { while (i <= NF && $i !~ /\]$/) i++; i++ }
      if (i + 1 <= NF) print $i, $(i + 1)
    }' "$f"
  done
  for f in /etc/apt/sources.list.d/*.sources; do
    [ -f "$f" ] || continue
    awk '
      function flush(   n, m, a, b, u, s) {
        if (types ~ /(^| )deb( |$)/ && enabled != "no") {
          n = split(uris, u, " "); m = split(suites, s, " ")
          for (a = 1; a <= n; a++) for (b = 1; b <= m; b++) print u[a], s[b]
        }
        types = uris = suites = enabled = ""
      }
      /^[ \t]*$/ { flush(); next }
      /^#/ { next }
      {
        key = tolower($1); $1 = ""; sub(/^ +/, "")
        if (key == "types:") types = $0
        else if (key == "uris:") uris = $0
        else if (key == "suites:") suites = $0
        else if (key == "enabled:") enabled = tolower($0)
      }
      END { flush() }' "$f"
  done
}

sources=$(apt_sources | awk -v s="$suite" '$2 == s || $2 == s "-updates" || $2 == s "-security"' | sort -u)
mirror=$(printf '%s\n' "$sources" | awk -v s="$suite" '$2 == s { print $1; exit }')
[ -n "$mirror" ] || die "no '$suite' source in /etc/apt/sources.list or /etc/apt/sources.list.d"

# --- mounts, leftovers and clean-up ------------------------------------------

mounted() { awk -v p="$1" '$2 == p { found = 1 } END { exit !found }' /proc/mounts; }
mounts_below() { awk -v r="$root/" 'index($2, r) == 1 { print $2 }' /proc/mounts; }

# Processes whose root is ours were started by this script (the command, its
# builds and tests, the X server): end each of them by its id.
end_root_processes() {
  for p in /proc/[0-9]*; do
    [ "$(readlink "$p/root" 2>/dev/null)" = "$root" ] || continue
    kill -TERM "${p#/proc/}" 2>/dev/null || true
  done
  sleep 1
  for p in /proc/[0-9]*; do
    [ "$(readlink "$p/root" 2>/dev/null)" = "$root" ] || continue
    kill -KILL "${p#/proc/}" 2>/dev/null || true
  done
}

unmount_all() {
  for m in sys dev/shm dev/pts dev proc; do
    if mounted "$root/$m"; then
      umount "$root/$m" 2>/dev/null || umount -l "$root/$m"
    fi
  done
}

work=$(mktemp -d)
cleanup() {
  status=$?
  trap - EXIT INT TERM HUP
  end_root_processes
  unmount_all
  rm -rf "$work"
  exit "$status"
}
trap cleanup EXIT
trap 'exit 130' INT
trap 'exit 143' TERM
trap 'exit 129' HUP

# --- the root ------------------------------------------------------------------

if [ -e "$root" ] && ! { [ "$reuse" = yes ] && [ -f "$root/$marker" ]; }; then
  [ -f "$root/$marker" ] || die "$root exists and was not made by this script: choose another --root"
  [ -z "$(mounts_below)" ] || die "something is still mounted below $root: $(mounts_below | tr '\n' ' ')"
  say "removing the root made before in $root"
  rm -rf --one-file-system "$root"
fi

if [ ! -e "$root" ]; then
  if ! command -v debootstrap >/dev/null 2>&1; then
    say "installing debootstrap"
    apt-get update
    DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends debootstrap
  fi
  say "making a minbase $suite root in $root from $mirror"
  mkdir -p "$root"
  touch "$root/$marker"
  debootstrap --variant=minbase --include=git,ca-certificates,sudo "$suite" "$root" "$mirror"
  printf '%s\n' "$sources" | awk '{ print "deb", $1, $2, "main" }' >"$root/etc/apt/sources.list"
fi
# Name look-ups inside the root work as they do here.
cp -L /etc/resolv.conf "$root/etc/resolv.conf"

mount -t proc proc "$root/proc"
mount --bind /sys "$root/sys"
mount --bind /dev "$root/dev"
mount --bind /dev/pts "$root/dev/pts"
mount --bind /dev/shm "$root/dev/shm"

# --- the repository --------------------------------------------------------------

commit=$(git -C "$repo" rev-parse HEAD)
branch=$(git -C "$repo" symbolic-ref -q --short HEAD || echo checked)
if [ -n "$(git -C "$repo" status --porcelain)" ]; then
  say "note: $repo has uncommitted changes; they are not part of the clone"
fi
rm -rf "$root$inner"
git clone -q --no-checkout "$repo" "$root$inner"
git -C "$root$inner" checkout -q -B "$branch" "$commit"
say "cloned $branch at $(git -C "$root$inner" log -1 --format='%h %s')"

# A login shell's environment as root on that system, nothing from ours. It
# replaces the calling shell, so call it in a subshell: then the id of a
# background "(in_root ...) &" is the command's own and a signal reaches it.
in_root() {
  exec chroot "$root" /usr/bin/env -i HOME=/root USER=root LOGNAME=root SHELL=/bin/sh \
    PATH="$path" TERM="${TERM:-dumb}" "$@"
}

if [ "$command" = test ]; then
  say "running scripts/test.sh in the root"
  (in_root /bin/sh -c "cd $inner && exec scripts/test.sh")
  exit $?
fi

# --- run: the game on an X server inside the root ----------------------------------
# The game needs a display, which a minimal system has none of. The set-up
# script brings Xvfb along (for the tests), so it runs first on its own; the
# README's run command then finds nothing left to install and must say so.
say "running scripts/install-deps.sh in the root"
(in_root /bin/sh -c "cd $inner && exec scripts/install-deps.sh")
(in_root /bin/sh -c "command -v Xvfb >/dev/null") || die "the set-up script left no Xvfb in the root"

(in_root Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp) 3>"$work/display" 2>"$work/xvfb.log" &
for _ in $(seq 100); do
  [ -s "$work/display" ] && break
  sleep 0.1
done
display=$(tr -d '\n' <"$work/display")
[ -n "$display" ] || { cat "$work/xvfb.log" >&2; die "Xvfb did not start"; }

say "running scripts/run.sh in the root on display :$display"
log=$work/run.log
(in_root DISPLAY=":$display" /bin/sh -c "cd $inner && exec scripts/run.sh") >"$log" 2>&1 &
game=$!
tail -n +1 -f --pid="$game" "$log" &
waited=0
while kill -0 "$game" 2>/dev/null && ! grep -q '^\[video\] ' "$log"; do
  if [ "$waited" -ge "$timeout" ]; then
    die "no \"[video]\" line within $timeout s"
  fi
  sleep 2
  waited=$((waited + 2))
done
grep -q '^\[video\] ' "$log" || { wait "$game" || true; die "the game ended without a \"[video]\" line"; }
if grep -q '^Installing:' "$log"; then
  die "the set-up script installed something the second time: it is not idempotent"
fi
# Let it draw a few frames, then close it as a desktop would.
sleep 3
kill -0 "$game" 2>/dev/null || { wait "$game" || true; die "the game ended by itself"; }
kill -TERM "$game"
status=0
wait "$game" || status=$?
sleep 0.2
say "$(grep -m1 '^\[video\] ' "$log")"
[ "$status" -eq 0 ] || die "the game exited with status $status after SIGTERM"
say "the game started and closed cleanly"
