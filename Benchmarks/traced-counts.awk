# Counts the system calls of each stretch in a trace of RecordHost:
# "system calls", kind, number of calls of the host, count.
BEGIN { OFS = "\t" }

match($0, /"stretch:[^"]*"/) {
    stretch = substr($0, RSTART + 9, RLENGTH - 10)
    if (stretch != "") names[++number] = stretch
    next
}

stretch != "" && $2 ~ /^[a-z_0-9]+\(/ { total[stretch]++ }

END {
    for (i = 1; i <= number; i++) {
        colon = match(names[i], /:[0-9]+$/)
        print "system calls", substr(names[i], 1, colon - 1), substr(names[i], colon + 1),
            total[names[i]] + 0
    }
}
