# For scripts/graph: lines "FILE:#include "PATH"", split at the quotes, to a mermaid flow chart.
function box(path,    parts) {
  split(path, parts, "/")
  return parts[1] == "foundation" ? "foundation" : parts[1] "/" parts[2]
}

# Whether `to` can be reached from `from` in two steps or more.
function reached_otherwise(from, to,    middle) {
  for (middle in boxes)
    if (middle != from && middle != to && uses[from, middle] && reaches(middle, to))
      return 1
  return 0
}

function reaches(from, to,    next_box, result) {
  if ((from, to) in known)
    return known[from, to]
  known[from, to] = 0 # ends the search in a circle
  result = uses[from, to]
  for (next_box in boxes)
    if (!result && uses[from, next_box])
      result = reaches(next_box, to)
  known[from, to] = result
  return result
}

function identifier(name) { gsub(/[^a-z]/, "_", name); return name }

function draw_group(folder, title,    i, short) {
  printf "  subgraph %s_group[\"%s\"]\n", folder, title
  for (i = 1; i <= count; i++)
    if (index(ordered[i] "/", folder "/") == 1) {
      short = ordered[i]
      sub(/^[a-z]+\//, "", short)
      printf "    %s[%s]\n", identifier(ordered[i]), short
    }
  print "  end"
}

{
  file = $1
  sub(/:.*/, "", file)
  from = box(file)
  to = box($2)
  boxes[from] = boxes[to] = 1
  if (from != to)
    uses[from, to] = 1
}

END {
  # Insertion sort: the order of awk's arrays is not defined.
  for (name in boxes) {
    for (i = ++count; i > 1 && ordered[i - 1] > name; i--)
      ordered[i] = ordered[i - 1]
    ordered[i] = name
  }
  print "flowchart TD"
  draw_group("apps", "apps: put the two together")
  draw_group("desks", "desks: know contracts")
  draw_group("foundation", "foundation: the contracts")
  draw_group("services", "services: keep the contracts")
  for (i = 1; i <= count; i++)
    for (j = 1; j <= count; j++)
      if (uses[ordered[i], ordered[j]] && !reached_otherwise(ordered[i], ordered[j]))
        printf "  %s --> %s\n", identifier(ordered[i]), identifier(ordered[j])
}
