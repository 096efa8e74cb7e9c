eye{0 0 10000}
persp_ang{45}
tag{1 1 0 0.0 1000 2000 0
text{23
Flange rating {PN 16}}}
tag{2 1 0 0.0 1000 2000 0
text{3
x}}
tag{3 1 0 0.0 1000 2000 0
text{6
fine}}
