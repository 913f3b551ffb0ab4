# Shared by the frame benchmarks (sourced): a private Xvfb for the run and
# the median of a column of numbers.

# Starts Xvfb on a free display, exports DISPLAY and stops it on exit.
start_xvfb() {
  local fd_file
  fd_file=$(mktemp)
  Xvfb -displayfd 3 -screen 0 2600x1500x24 -nolisten tcp 3>"$fd_file" >/dev/null 2>&1 &
  XVFB_PID=$!
  # shellcheck disable=SC2064
  trap "kill $XVFB_PID 2>/dev/null; rm -f '$fd_file'" EXIT
  for _ in $(seq 50); do [ -s "$fd_file" ] && break; sleep 0.1; done
  export DISPLAY=":$(head -n1 "$fd_file")"
}

# The median of the numbers on standard input, one a line ("nan" for none).
median() { sort -g | awk '{a[NR]=$1} END {if (NR==0) {print "nan"} else if (NR%2) {print a[(NR+1)/2]} else {print (a[NR/2]+a[NR/2+1])/2}}'; }
