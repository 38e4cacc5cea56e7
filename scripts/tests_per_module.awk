# Reads ctest's LastTest.log and prints, per module (the word before the dot of a test's name; those
# of the second engine apart),
# the programs, the test cases in them and those that failed or were skipped. A test case is a
# row of a test function; the set-up and clean-up that QtTest counts along are left out.
function finish() {
  if (name == "")
    return
  programs[module]++
  cases[module] += counted ? sum - 2 : 1
  skipped[module] += counted ? skip : is_skipped
  failed[module] += counted ? fail : (outcome != "Passed")
  if (counted && fail == 0 && outcome != "Passed")
    failed[module]++
  name = ""
}
/^[0-9]+\/[0-9]+ Test(ing)?: / && !/Testing/ {
  finish()
  name = $NF
  module = name
  sub(/\..*/, name ~ /\..*\.postgres$/ ? ".postgres" : "", module)
  sum = fail = skip = counted = is_skipped = 0
  outcome = ""
}
/^Totals: [0-9]+ passed, / {
  counted = 1
  sum += $2 + $4 + $6
  fail += $4
  skip += $6
}
# A whole program that could not be run here; ctest's log calls it passed.
/^SKIP   : / { is_skipped = 1 }
/^Test (Passed|Failed)\.|^Test Timeout|^Test .*exit code/ { outcome = $2; sub(/\./, "", outcome) }
END {
  finish()
  format = "    %-18s %8s %8s %8s %8s\n"
  printf format, "module", "programs", "cases", "failed", "skipped"
  sort = "sort"
  for (m in programs) {
    printf format, m, programs[m], cases[m], failed[m], skipped[m] | sort
    p += programs[m]; c += cases[m]; f += failed[m]; s += skipped[m]
  }
  close(sort)
  printf format, "all", p, c, f, s
}
