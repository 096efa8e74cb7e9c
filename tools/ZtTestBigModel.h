#pragma once
#include "tools/ZtTestDgnWriter.h"

// A big scene in one model (m / mm, 80 UORs per mm) for load and report measures: line
// strings of 0.1 m or so on a 1000-wide grid of 0.1 m steps, each with a DMRS linkage,
// on varying levels and colours, and every 100th piece a cell of two shapes. `elements`
// counts cells and their components alike; about 80 bytes an element.
ZtTestDgnWriter ZtTestBigModel(int elements);
// The number of its pieces: line strings and cells, each with a DMRS linkage of entity 12
// and the piece's number, from 0, as occurrence.
int ZtTestBigModelPieces(int elements);
