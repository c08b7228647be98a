# Draws what a record costs as the work grows, beside the bare write: four panels of the files
# curve-*.tsv of the current folder. `output` names the picture, `kind` its terminal.
stats "< cat curve-*.tsv" using 2 name "library" nooutput

set terminal @kind
set output output
set multiplot layout 2,2 margins 0.065,0.97,0.085,0.84 spacing 0.085,0.215 \
    title "{/:Bold What a record costs, beside a bare write(2) of the same bytes}" font ",17"

set style line 1 linecolor "#0b5394" linewidth 2.5 pointtype 7 pointsize 0.9
set style line 2 linecolor "#8a8f94" linewidth 2.5 pointtype 5 pointsize 0.7 dashtype (8,4)
set style line 3 linecolor "#c2571a" linewidth 2.5 pointtype 9 pointsize 1.1
set border 3 linecolor "#444444"
set tics nomirror out textcolor "#222222"
set grid ytics linecolor "#dddddd" linetype 1 linewidth 0.7
set key at graph -0.01,1.11 left top Left reverse horizontal samplen 2.5 textcolor "#222222"
set ylabel "microseconds a record" offset 0.8
set yrange [0:1.1 * library_max]
set format y "%.1f"

set title "{/:Bold Length of the session}" font ",14" offset 0,0.9
set xlabel "records before it in the session"
set logscale x 10
set xrange [800:125000]
set xtics ("1,000" 1000, "" 2000, "" 5000, "10,000" 10000, "" 20000, "" 50000, "100,000" 100000)
plot "curve-records.tsv" using 1:2 with linespoints linestyle 1 title "library", \
     "" using 1:3 with linespoints linestyle 2 title "write(2)"

set title "{/:Bold Open sessions}"
set xlabel "sessions, recorded into in turn"
set logscale x 2
set xrange [0.85:38]
set xtics (1, 2, 4, 8, 16, 32)
plot "curve-sessions.tsv" using 1:2 with linespoints linestyle 1 title "library", \
     "" using 1:3 with linespoints linestyle 2 title "write(2)"

set title "{/:Bold Threads}"
set xlabel "threads that record into one session"
set xrange [0.85:19]
set xtics (1, 2, 4, 8, 16)
plot "curve-threads.tsv" using 1:2 with linespoints linestyle 1 title "library", \
     "" using 1:3 with linespoints linestyle 2 title "mutex and write(2)"

set title "{/:Bold Stored keys, and files in the log folder}"
set xlabel "keys of the preferences, or other files (none stands at 10)"
set logscale x 10
set xrange [8:125000]
set xtics ("10" 10, "100" 100, "1,000" 1000, "10,000" 10000, "100,000" 100000)
plot "curve-keys.tsv" using 1:2 with linespoints linestyle 1 title "keys", \
     "" using 1:3 with linespoints linestyle 2 notitle, \
     "curve-files.tsv" using ($1 > 0 ? $1 : 10):2 with linespoints linestyle 3 title "files", \
     "" using ($1 > 0 ? $1 : 10):3 with linespoints linestyle 2 title "write(2)"

unset multiplot
