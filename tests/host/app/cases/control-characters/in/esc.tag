eye{0 0 10000}
persp_ang{45}
tag{1 1 0 0.0 1000 2000 0
text{17
clear [2J bell }}
tag{2 1 0 0.0 1000 2000 0
text{22
title ]0;owned ‮evil}}
