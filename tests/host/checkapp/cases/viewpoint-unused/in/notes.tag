eye{1 0 0}
eye{2 0 0}
tag{1 1 0 0.000000 1 2 3
text{2
ab}}
clip_far{900}
