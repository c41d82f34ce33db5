# The help of one command as lines of the table that commands.sh describes. -v command=NAME.
# Below a heading, what is told starts in column 3 and its description in column 31, or there on the next line.
BEGIN {
    OFS = "\t"
    command = command == "" ? "-" : command
}

function kind_of(argument, told,   words) {
    if (argument == "")
        return "none"
    if (argument ~ /^(PLUGIN|MODULE)/)
        return "plugin"
    if (argument ~ /^DIR/)
        return "dir"
    if (argument ~ /^(FILE|SCRIPT)|\.(wav|mid|png|js)$/)
        return "file"
    if (!match(told, /: [a-z0-9.]+(, [a-z0-9.]+)+$/))
        return "other"
    words = substr(told, RSTART + 2)
    gsub(/,/, "", words)
    return "words " words
}

function known(text) {
    return text == "" ? "-" : text
}

# Takes what matches out of `rest`.
function take(pattern,   found) {
    if (!match(rest, pattern))
        return ""
    found = substr(rest, RSTART, RLENGTH)
    rest = substr(rest, 1, RSTART - 1) substr(rest, RSTART + RLENGTH)
    return found
}

function print_option(entry, told,   spelling, range, given, rules) {
    spelling = entry
    sub(/ .*/, "", spelling)
    rest = substr(entry, length(spelling) + 2)
    rules = take(" ?Excludes: [^ ]+") " " take(" ?Needs: [^ ]+") " " take(" ?REQUIRED")
    gsub(/  +/, " ", rules)
    gsub(/^ | $/, "", rules)
    range = take(" in \\[[^]]*\\]")
    gsub(/^ in \[|\]$/, "", range)
    given = take("=[0-9.]+$")
    sub(/:(INT|FLOAT|UINT|TEXT)$/, "", rest)
    print "O", command, spelling, known(rest), kind_of(rest, told), known(range), known(substr(given, 2)), known(rules), told
}

function print_positional(entry, told) {
    sub(/ .*/, "", entry)
    print "A", command, entry, kind_of(entry, told), told
}

function print_pending(told,   entry) {
    entry = pending
    pending = ""
    if (told == "") {
        told = substr(entry, 31)
        entry = substr(entry, 1, 30)
        sub(/ +$/, "", entry)
    }
    sub(/^ +/, "", entry)
    if (section == "Options:")
        print_option(entry, told)
    else if (section == "Positionals:")
        print_positional(entry, told)
}

pending != "" && substr($0, 1, 30) ~ /^ +$/ { print_pending(substr($0, 31)); next }
pending != "" { print_pending("") }
/^Usage: / { print "C", command, substr($0, 8), about; next }
/^[A-Z][a-z]+:$/ { section = $0; next }
section == "" { about = about $0; next }
/^  [^ ]/ { pending = $0 }
END {
    if (pending != "")
        print_pending("")
}
