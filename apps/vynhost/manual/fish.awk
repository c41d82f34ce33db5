# Completion for fish, from the table of commands.sh.
BEGIN {
    FS = "\t"
    print "# Completion of vynhost for fish; made from what the program says of itself.\n"
    print "complete -c vynhost -f"
}

function quoted(text) {
    gsub(/\\/, "\\\\", text)
    gsub(/'/, "\\'", text)
    return "'" text "'"
}

# True while the command line names that command, and none below it.
function condition(name,   text, parts, count, i) {
    if (name == "-")
        return "__fish_use_subcommand"
    count = split(name, parts, " ")
    for (i = 1; i <= count; ++i)
        text = text (i > 1 ? "; and " : "") "__fish_seen_subcommand_from " parts[i]
    return text
}

function offer(kind) {
    if (kind ~ /^words /)
        return " -x -a " quoted(substr(kind, 7))
    if (kind == "dir")
        return " -x -a '(__fish_complete_directories)'"
    if (kind == "none")
        return ""
    return kind == "other" ? " -x" : " -r -F"
}

function print_names() {
    print "    vynhost list --json 2>/dev/null | string match -r -g '^ *\"name\": \"([^\"\\\\\\\\]*)\",*$' | sort -u"
}

$1 == "C" && $2 != "-" {
    parent = $2
    last = $2
    sub(/.* /, "", last)
    if (!sub(/ [^ ]+$/, "", parent))
        parent = "-"
    printf "complete -c vynhost -n %s -a %s -d %s\n", quoted(condition(parent)), last, quoted($4)
}
$1 == "A" && $4 == "dir" {
    printf "complete -c vynhost -n %s -a '(__fish_complete_directories)'\n", quoted(condition($2))
}
$1 == "A" && ($4 == "file" || $4 == "plugin") { printf "complete -c vynhost -n %s -F\n", quoted(condition($2)) }
$1 == "A" && $4 == "plugin" { printf "complete -c vynhost -n %s -a '(__vynhost_names)'\n", quoted(condition($2)) }
$1 == "O" {
    count = split($3, parts, ",")
    flags = ""
    for (i = 1; i <= count; ++i)
        flags = flags (parts[i] ~ /^--/ ? " -l " substr(parts[i], 3) : " -s " substr(parts[i], 2))
    printf "complete -c vynhost -n %s%s%s -d %s\n", quoted(condition($2)), flags, offer($5), quoted($9)
}
END {
    print "\nfunction __vynhost_names"
    print_names()
    print "end"
}
