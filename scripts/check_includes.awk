# The boundaries, for scripts/check_includes. A file is judged by its top folder (in services/
# also by its module), and so is what it includes.
BEGIN {
  # The modules of services/, from the lowest floor up; a module sees its own folder and the
  # floors below, never its neighbours.
  floors = "notices;config disk;records filestore archive tables;odbpp search;session tasks;imports;common ui;api"
  count = split(floors, floor, ";")
  for (i = 1; i <= count; i++) {
    n = split(floor[i], names, " ")
    for (j = 1; j <= n; j++)
      level[names[j]] = i
  }
  # What the applications and a host may see.
  n = split("desks/export/DMS_Export_Widget.h desks/download/DMS_Download_Widget.h " \
            "desks/modifyfile/DMS_ModifyFile_Widget.h desks/common/DMS_TurnPage_Plugin.h " \
            "desks/common/StyleSheets.h services/notices/Outcome.h services/notices/Progress.h", names, " ")
  for (i = 1; i <= n; i++)
    open_to_hosts[names[i]] = 1
}

function top(path) { split(path, parts, "/"); return parts[1] }

function second(path) { split(path, parts, "/"); return parts[2] }

function is_public(path) {
  return top(path) == "foundation" || (path in open_to_hosts) || path ~ /^services\/api\/[^\/]*$/
}

# The reason why `from` must not include `to`, or nothing.
function reason(from, to,    here, there) {
  here = top(from)
  there = top(to)
  if (to ~ /\.cpp$/)
    return "a source file is not included"
  if (to ~ /\.moc$/ && to !~ /\//)
    return ""
  if (there !~ /^(foundation|desks|services|apps|bench|examples|tests)$/)
    return "includes are written from the repository's top folder"
  if (here == "tests")
    return ""
  if (there == "tests")
    return here == "bench" ? "" : "only tests include tests"
  if (here == "foundation")
    return there == "foundation" ? "" : "a contract knows only contracts"
  if (here == "desks")
    return desk_reason(from, to, there)
  if (here == "services")
    return service_reason(from, to, there)
  if (here == "bench" && there != "apps")
    return ""
  if (there == here && (second(from) == second(to) || second(to) == "console"))
    return ""
  return is_public(to) ? "" : "an application sees only the public headers"
}

function desk_reason(from, to, there,    mine, other) {
  if (there == "foundation")
    return ""
  if (there != "desks")
    return "a desk knows only contracts and desks"
  mine = second(from)
  other = second(to)
  if (other == mine || other == "common" || (mine == "download" && other == "modifyfile"))
    return ""
  return "one desk does not look into another"
}

function service_reason(from, to, there,    mine, other) {
  if (there == "foundation")
    return ""
  if (there != "services")
    return "services know nothing above them"
  mine = second(from)
  other = second(to)
  if (!(mine in level) || !(other in level))
    return "unknown module: give it its floor in scripts/check_includes.awk"
  if (from ~ /\.h$/ && is_public(from))
    return is_public(to) ? "" : "a public header includes no private one"
  return mine == other || level[other] < level[mine] ? "" : "services/" other " is not below services/" mine
}

/^[ \t]*#[ \t]*include[ \t]*"/ {
  split($0, quoted, "\"")
  why = reason(FILENAME, quoted[2])
  if (why != "") {
    printf "%s:%d: %s: %s\n", FILENAME, FNR, quoted[2], why
    found = 1
  }
}
END { exit found }
