#pragma once
#include "check/Finding.h"
#include "diagnostics/ZtOdPdsDiagnostics.h"

// The findings of what the text readers do to any file, and of the blocks of tag and
// control files: one function a check of ZtOdPdsCheck.
Finding DescribeNulCut(const ZtOdPdsDiagnostic& d);
Finding DescribeStrayText(const ZtOdPdsDiagnostic& d);
Finding DescribeLineSplit(const ZtOdPdsDiagnostic& d);
Finding DescribeLastLineDropped(const ZtOdPdsDiagnostic& d);
Finding DescribeUnknownKey(const ZtOdPdsDiagnostic& d);
Finding DescribeUnclosedBlock(const ZtOdPdsDiagnostic& d);
Finding DescribeStrayBrace(const ZtOdPdsDiagnostic& d);
