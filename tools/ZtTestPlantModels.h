#pragma once
#include "tools/ZtTestDgnWriter.h"

#include <string>
#include <vector>

// The sample plant: a few models of one small process unit, each in its own units. The
// plant is laid out in metres from a common origin; each model converts to its own UORs.
//
// - pipes.dgn (m / mm, 80000 UORs per metre): process lines on level 10 (colour 1),
//   utility lines on level 11 (colour 4), valves as cells on level 12 (colour 2), line
//   labels on level 13 (colour 6).
// - equipment.dgn (ft / in, 96000 UORs per foot): tanks as cells on level 20 (colour 7),
//   pumps as cells on level 21 (colour 3), nozzles on level 22 (colour 5).
// - steel.dgn (mm / um, 1000 UORs per millimetre): columns on level 30 (colour 11), beams
//   on level 31 (colour 12), bracing on level 32 (colour 13).
//
// Every drawn piece carries a DMRS linkage: entity 12 piping, 13 valves, 21 equipment,
// 22 nozzles, 40 structural members; occurrences are numbered by model.
struct ZtTestPlantModel {
    std::string fileName;
    ZtTestDgnWriter writer;
};

std::vector<ZtTestPlantModel> ZtTestPlantModels();
