#pragma once
#include <string>

class ZtDgnModel;
class ZtPdsDbSource;

// Reads the rows of `source` in one pass and attaches those of the model's keys to the
// model's elements. On failure the model keeps what it had, and `error` says why.
bool ZtPdsDbAttach(ZtPdsDbSource& source, ZtDgnModel& model, std::string* error);
