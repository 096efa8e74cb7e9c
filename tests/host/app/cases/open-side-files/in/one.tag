eye{0 -10000 0}
target{0 0 0}
tag{4 1 0 0.0 0 0 0
text{6
note}}
tag{9 1 0 0.0 1000 0 0
text{6
note}}
