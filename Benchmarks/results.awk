# Prints the rows of results as a table: what was measured, the library's figure and the floor's,
# the ratio of the two, the target, and whether it is met. The rows of a section stand together.
# With `markdown` set, as Markdown.
BEGIN { FS = "\t" }

!($1 in rows_of) { sections[++section_count] = $1 }
{ rows_of[$1] = rows_of[$1] $0 "\n" }

# Three digits are enough; counts are whole.
function figure(value, unit) {
    if (value == "") return ""
    if (markdown) sub(/^us$/, "µs", unit)
    unit = unit == "" ? "" : " " unit
    if (value == int(value) || value >= 100) return sprintf("%.0f%s", value, unit)
    return sprintf("%.*f%s", value < 1 ? 3 : value < 10 ? 2 : 1, value, unit)
}

function is_met(value, target, words) {
    split(target, words, " ")
    return words[1] == "=" ? value + 0 == words[2] + 0 : value + 0 <= words[2] + 0
}

function heading(section, parts, floor) {
    split(section, parts, " [|] ")
    floor = parts[2] == "" ? "" : "; floor: " parts[2]
    if (markdown)
        printf "\n**%s**%s\n\n| what | library | floor | ratio | target | |\n%s\n", parts[1], floor,
            "| --- | ---: | ---: | ---: | ---: | --- |"
    else
        printf "\n%s%s\n", parts[1], floor
}

function columns(what, library, floor, ratio, target, verdict) {
    printf markdown ? "| %s | %s | %s | %s | %s | %s |\n" : "  %-52s %10s %10s %7s %8s  %s\n", what,
        library, floor, ratio, target, verdict
}

function row(line, fields, verdict) {
    split(line, fields, "\t")
    if (fields[7] != "") {
        verdict = is_met(fields[6] == "" ? fields[4] : fields[6], fields[7]) ? "met" : "MISSED"
        verdicts[verdict]++
    }
    columns(fields[2], figure(fields[4], fields[3]), figure(fields[5], fields[3]),
        fields[6] == "" ? "" : sprintf(fields[6] < 10 ? "%.3f" : "%.1f", fields[6]), fields[7],
        verdict)
}

END {
    if (!markdown) columns("", "library", "floor", "ratio", "target", "")
    for (i = 1; i <= section_count; i++) {
        heading(sections[i])
        count = split(rows_of[sections[i]], lines, "\n")
        for (j = 1; j < count; j++) row(lines[j])
    }
    printf "\n%d targets met, %d missed.\n", verdicts["met"], verdicts["MISSED"]
}
