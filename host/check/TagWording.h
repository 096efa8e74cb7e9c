#pragma once
#include "check/Finding.h"
#include "diagnostics/ZtOdPdsDiagnostics.h"

// The findings of the tag import: one function a check of ZtOdPdsCheck.
Finding DescribeIgnoredKey(const ZtOdPdsDiagnostic& d);
Finding DescribeStickyValue(const ZtOdPdsDiagnostic& d);
Finding DescribeStickyUnused(const ZtOdPdsDiagnostic& d);
Finding DescribeTagHead(const ZtOdPdsDiagnostic& d);
Finding DescribeTagKind(const ZtOdPdsDiagnostic& d);
Finding DescribeTagPoint(const ZtOdPdsDiagnostic& d);
Finding DescribeTagText(const ZtOdPdsDiagnostic& d);
Finding DescribeTagCamera(const ZtOdPdsDiagnostic& d);
Finding DescribeTagLineEnds(const ZtOdPdsDiagnostic& d);
Finding DescribeTextCount(const ZtOdPdsDiagnostic& d);
Finding DescribeTagIdRepeated(const ZtOdPdsDiagnostic& d);
