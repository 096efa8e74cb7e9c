#pragma once
#include "check/Finding.h"
#include "diagnostics/ZtOdPdsDiagnostics.h"

// The findings of the control-file loader: one function a check of ZtOdPdsCheck.
Finding DescribeNotControlFile(const ZtOdPdsDiagnostic& d);
Finding DescribeNumberCount(const ZtOdPdsDiagnostic& d);
Finding DescribeUnknownUnit(const ZtOdPdsDiagnostic& d);
Finding DescribeOriginOrder(const ZtOdPdsDiagnostic& d);
Finding DescribeOverridden(const ZtOdPdsDiagnostic& d);
Finding DescribeModelName(const ZtOdPdsDiagnostic& d);
Finding DescribeTextAfterEnd(const ZtOdPdsDiagnostic& d);
