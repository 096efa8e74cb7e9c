file{0n{pipes.dgn}}
target{1682388 1440000 460597}
clip_far{9599999}
persp_ang{40}
eye{1760000 1440000 480000}
tag{101 1 0 0.000000 320000 1040000 120000
p{310526 997105 157894}
l{0 13 301 0}
text{87
V-301: gate valve on the feed line.
Handwheel faces the walkway; turn it by 90 degrees.}}
tag{102 1 0 0.000000 -320000 1920000 120000
p{-333506 1963376 174025}
l{0 12 101 0}
text{78
Process line 101 rises here.
Check the support spacing
against the steel grid.}}
target{560000 2480000 240000}
clip_far{1600000}
clip_near{80000}
eye{640000 2480000 240000}
tag{103 1 0 0.000000 -320000 2320000 120000
p{-320000 2280000 159999}
l{0 13 302 0}
text{95
Flange rating {PN 16} to be confirmed; bolts M16 {4 off} per side.
See note } in the line list.}}
tag{104 1 0 0.000000 -320000 2640000 400000
p{-320000 2640000 400000}
l{0 12 102 0}
text{29
Bend at the top of the riser.}}
target{-644989 879834 481247}
persp_ang{29}
eye{-640000 800000 480000}
tag{105 1 0 0.000000 -160000 3296000 720000
p{-200578 3292719 767621}
l{0 13 304 0}
text{97
V-304 Ø 150 mm – Absperrventil, Prüfung fällig.
Operator platform needed, see steel {S-12} first.}}
tag{106 1 0 0.000000 -1400000 3440000 320000
p{-1400000 3440000 319999}
l{0 12 203 0}
text{23
Utility header end cap.}}
