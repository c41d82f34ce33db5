# The manual page: page.awk -v version=VERSION TABLE vynhost.1.in. A line "@command NAME@" becomes what the table (commands.sh)
# says of that command and those below it, "@further@" the commands that the page does not mention otherwise.
BEGIN { FS = "\t" }

function roff(text) {
    gsub(/\\/, "\\e", text)
    gsub(/-/, "\\-", text)
    return text ~ /^[.']/ ? "\\&" text : text
}

function sentence(text) {
    return roff(text) (text ~ /\.$/ ? "" : ".")
}

# What the fields of an option say besides its description.
function conditions(range, given, rules,   text) {
    sub(/ - /, " to ", range)
    text = range == "-" ? "" : " From " range "."
    text = text (given == "-" ? "" : " " given " unless said otherwise.")
    rules = rules == "-" ? "" : " " rules "."
    sub(/ Excludes:/, ". Not with", rules)
    sub(/ Needs:/, ". Only with", rules)
    sub(/ REQUIRED/, ". Required", rules)
    return roff(text substr(rules, 2))
}

function entry_of(spelling, argument) {
    gsub(/,/, "\\fR, \\fB", spelling)
    gsub(/-/, "\\-", spelling)
    return ".TP\n\\fB" spelling "\\fR" (argument == "-" ? "" : " \\fI" roff(argument) "\\fR") "\n"
}

# Records of the table.
NR == FNR && $1 == "C" { order[++count] = $2; usage[$2] = $3; told[$2] = $4; next }
NR == FNR && $1 == "A" { entries[$2] = entries[$2] ".TP\n\\fI" roff($3) "\\fR\n" sentence($5) "\n"; next }
NR == FNR && $3 ~ /--help$/ && $2 != "-" { next }
NR == FNR { entries[$2] = entries[$2] entry_of($3, $4) sentence($9) conditions($6, $7, $8) "\n"; next }

function print_one(name) {
    printf ".PP\n\\fB%s\\fR\n.br\n%s\n%s", roff(usage[name]), sentence(told[name]), entries[name]
}

function print_command(name,   i) {
    mentioned[name] = 1
    printf ".SS %s\n", name
    for (i = 1; i <= count; ++i)
        if (order[i] == name || index(order[i], name " ") == 1)
            print_one(order[i])
}

function print_further(   i) {
    for (i = 1; i <= count; ++i)
        if (order[i] != "-" && order[i] !~ / / && !(order[i] in mentioned))
            print_command(order[i])
}

# Lines of the page.
/^@command [a-z]+@$/ {
    name = substr($0, 10, length($0) - 10)
    if (name in usage)
        print_command(name)
    next
}
/^@options@$/ { printf "%s", entries["-"]; next }
/^@further@$/ { print_further(); next }
{ gsub(/@version@/, version); print }
