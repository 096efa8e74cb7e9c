tag{7 1 x
text{2
ab}}
tag{8 1 2 0.000000 1 2 3
text{2
ab}}
