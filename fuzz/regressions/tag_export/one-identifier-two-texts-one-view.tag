file{0n{piping.dgn}}
target{100 200 300}
clip_far{900}
clip_near{10}
persp_ang{45}
eye{500 200 300}
tag{7 1 0 0.000000 120 210 305
p{12ZtStdLevel5 215 305}
l{1 2 3 4}
text{17
Check this valve.}}
tag{8 1 00}
tag{7 1 0 0.000000 120 210 305
p{12ZtStdLevel5 215 305}
l{1 2 3 4}
text{17
Check this valve.}}
tag{8 1 0 0.000000 130 220 310
p{130 220 310}
text{14
Second remark.0}}
eye{600 200 300}
tag{9 1 0 0.000000 140 230 320
p{140 230 320}
0 0.000000 130 220 310
p{130 220 310}
text{14
Second remark.0}}
eye{600 200 300}
tag{9 1 0 0.000000 140 230 320
p{140 230 320}
text{4
Done}}
