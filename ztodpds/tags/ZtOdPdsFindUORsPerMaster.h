#pragma once

class ZtOaNode;

// The units of resolution per master unit of the first model in the tree below `node`:
// the property "ZtDgnUORsPerMaster" of the attribute "ZtDgnSceneProps". The node itself
// is asked first, whatever the sign of its value; below it, depth first, a node that
// carries the property ends the search only with a value above 0, and otherwise its
// subtree is passed over. 0.0 when nothing is found.
double ZtOdPdsFindUORsPerMaster(const ZtOaNode* node);
