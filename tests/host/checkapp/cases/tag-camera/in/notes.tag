persp_ang{0}
tag{1 1 0 0.000000 1 2 3
text{2
ab}}
tag{2 1 0 0.000000 1 2 3
text{2
ab}}
tag{3 1 0 0.000000 1 2 3
text{2
ab}}
tag{4 1 0 0.000000 1 2 3
text{2
ab}}
persp_ang{45}
tag{5 1 0 0.000000 1 2 3
text{2
ab}}
