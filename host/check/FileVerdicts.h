#pragma once
#include "check/FileCheck.h"
#include "check/Finding.h"

#include <string>
#include <vector>

class FindingCollector;

// The findings of a check of `path`, read as `kind` (its side files by their extensions),
// in the order of the files and of the places in them: a file that holds nothing of its
// kind has its findings replaced by one error that says so, and what it looks like.
std::vector<Finding> JudgeFiles(const std::wstring& path, FileKind kind,
                                FindingCollector& collector);
