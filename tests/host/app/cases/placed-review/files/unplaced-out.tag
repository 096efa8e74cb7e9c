file{0n{pipes.dgn}}
target{1040000 -882388 460597}
clip_far{9599999}
persp_ang{40}
eye{1040000 -960000 480000}
tag{101 1 0 0.000000 640000 480000 120000
p{597105 489473 157894}
l{0 13 301 0}
text{87
V-301: gate valve on the feed line.
Handwheel faces the walkway; turn it by 90 degrees.}}
tag{102 1 0 0.000000 1520000 1120000 120000
p{1563376 1133506 174025}
l{0 12 101 0}
text{78
Process line 101 rises here.
Check the support spacing
against the steel grid.}}
target{2080000 240000 240000}
clip_far{1600000}
clip_near{80000}
eye{2080000 160000 240000}
tag{103 1 0 0.000000 1920000 1120000 120000
p{1880000 1120000 159999}
l{0 13 302 0}
text{95
Flange rating {PN 16} to be confirmed; bolts M16 {4 off} per side.
See note } in the line list.}}
tag{104 1 0 0.000000 2240000 1120000 400000
p{2240000 1120000 400000}
l{0 12 102 0}
text{29
Bend at the top of the riser.}}
target{479834 1444989 481247}
persp_ang{29}
eye{400000 1440000 480000}
tag{105 1 0 0.000000 2896000 960000 720000
p{2892719 1000578 767621}
l{0 13 304 0}
text{97
V-304 Ø 150 mm – Absperrventil, Prüfung fällig.
Operator platform needed, see steel {S-12} first.}}
tag{106 1 0 0.000000 3040000 2200000 320000
p{3040000 2200000 319999}
l{0 12 203 0}
text{23
Utility header end cap.}}
