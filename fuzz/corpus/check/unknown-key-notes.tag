Target{1 2 3}
p{1 2 3}
tag{7 1 0 0.000000 1 2 3 p{1 2 3}
q{1}
text{2
ab}}
