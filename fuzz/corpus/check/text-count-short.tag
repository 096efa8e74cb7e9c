tag{1 1 0 0.000000 1 2 3
text{1
x}}
tag{2 1 0 0.000000 1 2 3
text{2
ab}}
