# Takes the instructions of each stretch of RecordHost from the profiler's files:
# "instructions", kind, number of calls of the host, count.
/^desc: Trigger: Client Request: / {
    stretch = substr($0, length("desc: Trigger: Client Request: ") + 1)
    colon = match(stretch, /:[0-9]+$/)
}

/^summary: / && stretch != "" {
    print "instructions\t" substr(stretch, 1, colon - 1) "\t" substr(stretch, colon + 1) "\t" $2
    stretch = ""
}
