file{0n{pipes.dgn}}
target{4751504 -2345442 2367265}
clip_far{9600000}
persp_ang{40}
eye{4800000 -2400000 2400000}
tag{101 1 0 0.000000 640000 480000 120000
p{645977 467288 89958}
l{0 12 101 0}
text{87
V-301: gate valve on the feed line.
Handwheel faces the walkway; turn it by 90 degrees.}}
tag{102 1 0 0.000000 1600000 1120000 120000
p{1606869 1107375 88781}
l{0 12 102 0}
text{78
Process line 101 rises here.
Check the support spacing
against the steel grid.}}
target{1920000 860206 347319}
clip_far{800000}
clip_near{80000}
eye{1920000 800000 400000}
tag{103 1 0 0.000000 1920000 1120000 120000
p{1962945 1111353 110118}
l{0 12 102 0}
text{95
Flange rating {PN 16} to be confirmed; bolts M16 {4 off} per side.
See note } in the line list.}}
tag{104 1 0 0.000000 2240000 1120000 480000
p{2240000 1120000 480000}
l{0 12 102 0}
text{29
Bend at the top of the riser.}}
target{-1520203 960000 405699}
persp_ang{29}
eye{-1600000 960000 400000}
tag{105 1 0 0.000000 2880000 960000 720000
p{2879795 1000358 722868}
l{0 12 106 0}
text{97
V-304 Ø 150 mm – Absperrventil, Prüfung fällig.
Operator platform needed, see steel {S-12} first.}}
tag{106 1 0 0.000000 3040000 1200000 320000
p{3040000 1200000 319999}
l{0 12 203 0}
text{23
Utility header end cap.}}
