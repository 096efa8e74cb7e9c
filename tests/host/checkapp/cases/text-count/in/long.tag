tag{1 1 0 0.000000 1 2 3
text{40
short}}
tag{2 1 0 0.000000 1 2 3
text{5
hello}}
