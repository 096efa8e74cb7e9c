eye{0 -10000 0}
target{0 0 0}
tag{7 1 0 0.0 0 0 0
text{6
note}}
