# Counts the system calls of each stretch that a traced SystemCallHost announces, and prints them
# as a table. Adds the totals to the table of results.

function count(name) {
    if (!(name in total_of)) names[++name_count] = name
    calls[name, stretch]++
    total_of[name]++
    total[stretch]++
}

function result(what, library, floor) {
    printf "System calls of a session | bare\t%s\t\t%d\t%d\t%f\t\n", what, library, floor,
        library / floor >> "results.tsv"
}

match($0, /"stretch:[^"]*"/) {
    stretch = substr($0, RSTART + 9, RLENGTH - 10)
    if (stretch != "") stretches[++stretch_count] = stretch
    next
}

# "PID name(arguments) = value"
stretch != "" && $2 ~ /^[a-z_0-9]+\(/ { count(substr($2, 1, index($2, "(") - 1)) }

END {
    printf "%-18s", "system call"
    for (s = 1; s <= stretch_count; s++) printf "%13s", stretches[s]
    print ""
    for (n = 1; n <= name_count; n++) {
        printf "%-18s", names[n]
        for (s = 1; s <= stretch_count; s++) printf "%13d", calls[names[n], stretches[s]]
        print ""
    }
    printf "%-18s", "all"
    for (s = 1; s <= stretch_count; s++) printf "%13d", total[stretches[s]]
    print ""
    for (s = 1; s <= stretch_count; s++) {
        split(stretches[s], words, " ")
        if (words[1] != "bare")
            result(stretches[s], total[stretches[s]], total["bare " words[2]])
    }
}
