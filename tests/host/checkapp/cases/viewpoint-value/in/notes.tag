target{1 2}
persp_ang{wide}
tag{1 1 0 0.000000 1 2 3
text{2
ab}}
