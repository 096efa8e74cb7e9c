#pragma once

class ZtDgnModel;
class ZtOpState;

// The bundled sample's pipe model loaded into the document's scene, as a control file's
// models are. A separate library from the rest of the fuzz support, so that the targets
// of the text readers load no model code, whose coverage the engine would scan each run.
ZtDgnModel* ZtFuzzAddSampleModel(ZtOpState& state);
