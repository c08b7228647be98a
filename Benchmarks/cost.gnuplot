# Draws what a record costs as the work grows, beside the bare write: four panels of the files
# curve-*.tsv of the current folder. `output` names the picture, `kind` its terminal.
stats "< cat curve-*.tsv" using 2 name "library" nooutput
top = 1.35 * library_max

set terminal @kind
set output output

set multiplot layout 2,2 title "Cost of a record beside the bare write of the same bytes" \
    font ",17" margins 0.075,0.975,0.1,0.86 spacing 0.085,0.17

set style line 1 linecolor "#0b5394" linewidth 2.5 pointtype 7 pointsize 0.8
set style line 2 linecolor "#8a8f94" linewidth 2.5 pointtype 5 pointsize 0.7 dashtype (6,3)
set style line 3 linecolor "#c2571a" linewidth 2.5 pointtype 9 pointsize 0.9
set border 3 linecolor "#444444"
set grid ytics linecolor "#dddddd" linetype 1 linewidth 0.7
set tics nomirror out textcolor "#222222"
set key top left horizontal samplen 2.2 width 1 textcolor "#222222"
set ylabel "µs a record" offset 0.8
set yrange [0:top]
set logscale x 10

set title "Number of records" offset 0,-0.4
set xlabel "how manieth record of the session"
set xrange [800:125000]
set xtics ("1,000" 1000, "2,000" 2000, "5,000" 5000, "10,000" 10000, "20,000" 20000, \
    "50,000" 50000, "100,000" 100000)
plot "curve-records.tsv" using 1:2 with linespoints linestyle 1 title "library", \
     "" using 1:3 with linespoints linestyle 2 title "write(2)"

set title "Number of sessions"
set xlabel "open sessions, recorded into in turn"
set logscale x 2
set xrange [0.85:38]
set xtics (1, 2, 4, 8, 16, 32)
plot "curve-sessions.tsv" using 1:2 with linespoints linestyle 1 title "library", \
     "" using 1:3 with linespoints linestyle 2 title "write(2)"

set title "Number of threads"
set xlabel "threads recording into one session"
set xrange [0.85:19]
set xtics (1, 2, 4, 8, 16)
plot "curve-threads.tsv" using 1:2 with linespoints linestyle 1 title "library", \
     "" using 1:3 with linespoints linestyle 2 title "mutex and write(2)"

set title "Number of keys and files"
set xlabel "keys of the preferences, other files in the log folder"
set logscale x 10
set xrange [8:125000]
set xtics ("10" 10, "100" 100, "1,000" 1000, "10,000" 10000, "100,000" 100000)
plot "curve-keys.tsv" using 1:2 with linespoints linestyle 1 title "library, keys", \
     "curve-files.tsv" using ($1 > 0 ? $1 : 10):2 with linespoints linestyle 3 \
        title "library, files", \
     "" using ($1 > 0 ? $1 : 10):3 with linespoints linestyle 2 title "write(2)"

unset multiplot
