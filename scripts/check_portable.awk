# The rules of scripts/check_portable. Comments are taken away first, and texts are looked at by
# themselves; what stands in a branch of the preprocessor that Windows does not take is skipped.
BEGIN {
  split_into("and or not xor bitand bitor compl and_eq or_eq xor_eq not_eq", operators)
  split_into("__attribute__ __attribute __typeof__ __typeof typeof __extension__ __int128 " \
             "__PRETTY_FUNCTION__ __asm__ __restrict__ __thread __complex__", gnu)
  split_into("ssize_t off_t pid_t uid_t gid_t mode_t useconds_t localtime_r gmtime_r strcasecmp " \
             "strncasecmp setenv unsetenv usleep strndup mkstemp", posix)
  split_into("ftell fseek strtol strtoul atol stol stoul labs toLong toULong", counting)
  foreign_include = "^<(unistd|dirent|pthread|poll|termios|strings|syslog|dlfcn|cxxabi|fcntl|" \
                    "sys/.*|netinet/.*|arpa/.*|bits/.*|ext/.*|linux/.*)(\\.h)?>"
}

function split_into(words, set,    list, i, n) {
  n = split(words, list, " ")
  for (i = 1; i <= n; i++)
    set[list[i]] = 1
}

function is_public(path) {
  return path ~ /^(foundation|tests\/fakes)\/.*\.h$/ || path ~ /^services\/api\/[^\/]*\.h$/ ||
         path ~ /^services\/notices\/(Outcome|Progress)\.h$/ ||
         path ~ /^desks\/[^\/]*\/DMS_[A-Za-z_]*\.h$/ ||
         path ~ /^desks\/common\/(DesksExport|StyleSheets|NamedControl)\.h$/
}

function say(what, why) {
  printf "%s:%d: %s: %s\n", FILENAME, FNR, what, why
  found = 1
}

# Which branch this line is in: skipping counts the ones around it that Windows does not take.
function follow_branches(line,    words) {
  words = line
  sub(/^[ \t]*#[ \t]*/, "", words)
  if (words ~ /^if/) {
    depth++
    branch[depth] = "any"
    if (words ~ /(_WIN32|Q_OS_WIN)/)
      branch[depth] = words ~ /^ifndef|!/ ? "else" : "windows"
    else if (words ~ /(Q_OS_UNIX|Q_OS_LINUX|__linux__|__unix__|__GNUC__|__POPCNT__)/ && words !~ /^ifndef|!/)
      branch[depth] = "else"
  } else if (words ~ /^el/ && branch[depth] == "windows") {
    branch[depth] = "else"
  } else if (words ~ /^el/ && branch[depth] == "else") {
    branch[depth] = "windows"
  } else if (words ~ /^endif/) {
    depth--
  }
}

function is_skipped(    i) {
  for (i = 1; i <= depth; i++)
    if (branch[i] == "else")
      return 1
  return 0
}

# A text, without its quotes. code_before is the code in front of it, without blanks.
function look_at_text(text) {
  if (text ~ /%[-+ 0#]*[0-9.*]*l[diouxX]/)
    say("\"" text "\"", "a format for long, which has 32 bits on Windows")
  if (is_public(FILENAME) && text ~ /[\200-\377]/ && code_before !~ /(QStringLiteral\(|u8?|U)$/)
    say("\"" text "\"", "a narrow text that is not ASCII, in a public header")
}

function is_long_long(before, behind) {
  return behind ~ /^[ \t]*long([^A-Za-z0-9_]|$)/ || before ~ /(^|[^A-Za-z0-9_])long[ \t]*$/
}

function look_at_word(word, before, behind) {
  if (word == "long" && !is_long_long(before, behind))
    say(word, "has 32 bits on Windows; qint64, int or std::size_t say what is meant")
  else if (word == "ulong")
    say(word, "has 32 bits on Windows")
  else if (word in counting && behind ~ /^[ \t]*\(/)
    say(word, "takes or gives long, which has 32 bits on Windows")
  else if (word in operators)
    say(word, "written as a sign: not every compiler knows the word")
  else if (word in gnu || word ~ /^__builtin_/)
    say(word, "known to some compilers only")
  else if (word in posix)
    say(word, "not on Windows; only in a file *_posix.cpp")
  else if (word ~ /^M_(PI|PI_2|PI_4|E|LN2|LN10|SQRT2|SQRT1_2)$/)
    say(word, "not in every <cmath>")
  else if (word == "wchar_t" && FILENAME !~ /_windows\./)
    say(word, "has 16 bits on Windows and 32 elsewhere")
  else if (word ~ /^(min|max)$/ && behind ~ /^[ \t]*\(/ && is_public(FILENAME))
    say(word, "a macro of <windows.h> in many hosts; in parentheses: (std::" word ")(...)")
}

function look_at_code(code,    before, rest, word) {
  before = ""
  rest = code
  while (match(rest, /[A-Za-z_][A-Za-z0-9_]*/)) {
    word = substr(rest, RSTART, RLENGTH)
    before = before substr(rest, 1, RSTART - 1)
    rest = substr(rest, RSTART + RLENGTH)
    # The letters of a number (0x1F, 10ULL) are no word.
    if (before !~ /[0-9']$/)
      look_at_word(word, before, rest)
    before = before word
  }
  if (code ~ /(^|[^A-Za-z0-9_])[0-9][0-9A-Fa-fxX']*[uU]?[lL][uU]?([^A-Za-z0-9_]|$)/)
    say("a number that ends with L", "has 32 bits on Windows; LL, or a type that says how many")
  if (code ~ /\[\[[ \t]*(gnu|clang|using)/)
    say("[[gnu::...]]", "known to some compilers only")
  if (code ~ /##[ \t]*__VA_ARGS__/)
    say("## __VA_ARGS__", "known to some compilers only")
}

function look_at_directive(line,    name) {
  name = line
  sub(/^[ \t]*#[ \t]*/, "", name)
  if (name ~ /^pragma/ && name !~ /^pragma once/)
    say(line, "a pragma of one compiler")
  if (name ~ /^(include_next|import|warning|ident)/)
    say(line, "known to some compilers only")
  if (name ~ /^include/) {
    sub(/^include[ \t]*/, "", name)
    if (name ~ foreign_include)
      say(name, "not on Windows; only in a file *_posix.cpp")
    return 1 # what is included is no code
  }
  return 0
}

# Takes comments and texts out of the line, looks at the texts, and returns the code.
function code_of(line,    code, at, end, text) {
  code = ""
  while (line != "") {
    if (in_comment) {
      at = index(line, "*/")
      if (!at)
        return code
      line = substr(line, at + 2)
      in_comment = 0
      continue
    }
    if (raw_end != "") {
      at = index(line, raw_end)
      if (!at)
        return code
      line = substr(line, at + length(raw_end))
      raw_end = ""
      continue
    }
    if (!match(line, /\/\/|\/\*|"|'/))
      return with(code, line)
    text = substr(line, RSTART, RLENGTH)
    code = with(code, substr(line, 1, RSTART - 1))
    line = substr(line, RSTART + RLENGTH)
    if (text == "//")
      return code
    if (text == "/*") {
      in_comment = 1
    } else if (text == "\"" && code ~ /R$/) {
      at = index(line, "(")
      raw_end = ")" substr(line, 1, at - 1) "\""
      line = substr(line, at + 1)
    } else if (text == "'" && code ~ /[0-9A-Fa-f]$/ && line ~ /^[0-9A-Fa-f]/) {
      code = code "'" # between the digits of a number
    } else {
      end = match(line, text == "\"" ? "^([^\"\\\\]|\\\\.)*\"" : "^([^'\\\\]|\\\\.)*'") ? RLENGTH : length(line)
      if (text == "\"")
        look_at_text(substr(line, 1, end - 1))
      line = substr(line, end + 1)
      code = code " "
    }
  }
  return code
}

# Adds to the code of this line, and to what stands in front of the next text.
function with(code, more,    dense) {
  dense = more
  gsub(/[ \t]/, "", dense)
  if (dense != "")
    code_before = code_before dense
  return code more
}

FNR == 1 {
  depth = in_comment = 0
  raw_end = code_before = ""
}
{
  if (length(code_before) > 200) # only its end is ever looked at
    code_before = substr(code_before, length(code_before) - 40)
  if (!in_comment && raw_end == "" && $0 ~ /^[ \t]*#/) {
    follow_branches($0)
    if (is_skipped() || look_at_directive($0))
      next
  }
  if (is_skipped())
    next
  look_at_code(code_of($0))
}
END { exit found }
