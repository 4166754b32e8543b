# SPDX-License-Identifier: Apache-2.0
# The plots of docs/performance.md, from the data that tav_bench has left in the directory `data`.
set terminal svg size 760,420 font "sans-serif,13" background "#ffffff"
set grid back linecolor "#d0d0d0"
set border 3
set tics nomirror

set output docs."/performance-sizes.svg"
set title "Reading the list of all apps"
set xlabel "apps on the device"
set ylabel "milliseconds"
set logscale xy
set key top left reverse Left
plot data."/sizes.dat" using 1:5 with linespoints pointtype 7 linecolor "#b0413e" title "over the bus", \
     "" using 1:4 with linespoints pointtype 5 linecolor "#d9a441" title "SQLiteCpp", \
     "" using 1:2 with linespoints pointtype 9 linecolor "#2f6f9f" title "library", \
     "" using 1:3 with linespoints pointtype 2 linecolor "#404040" title "bare SQLite"

set output docs."/performance-ratios.svg"
set title "The library's time over that of bare SQLite: medians and quartiles"
unset logscale
unset ylabel
set key off
set lmargin 26
set yrange [:] reverse
set offsets 0, 0, 0.6, 0.6
set xrange [0:*]
set xlabel "ratio; 1 is the floor"
set arrow from 1, graph 0 to 1, graph 1 nohead linecolor "#b0413e" dashtype 2
plot data."/ratios.dat" using 2:0:3:4:ytic(1) with xerrorbars pointtype 7 linecolor "#2f6f9f"
