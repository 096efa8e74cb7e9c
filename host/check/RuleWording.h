#pragma once
#include "check/Finding.h"
#include "diagnostics/ZtOdPdsDiagnostics.h"

// The findings of the display-set import: one function a check of ZtOdPdsCheck.
Finding DescribeNotStatement(const ZtOdPdsDiagnostic& d);
Finding DescribeSecondFind(const ZtOdPdsDiagnostic& d);
Finding DescribeCriterion(const ZtOdPdsDiagnostic& d);
Finding DescribeSeparator(const ZtOdPdsDiagnostic& d);
Finding DescribeEndFindText(const ZtOdPdsDiagnostic& d);
Finding DescribeNoScope(const ZtOdPdsDiagnostic& d);
Finding DescribeListNumber(const ZtOdPdsDiagnostic& d);
Finding DescribeDataAttribute(const ZtOdPdsDiagnostic& d);
Finding DescribeDataValue(const ZtOdPdsDiagnostic& d);
Finding DescribeDataOperator(const ZtOdPdsDiagnostic& d);
Finding DescribeSetReference(const ZtOdPdsDiagnostic& d);
Finding DescribeSetEmpty(const ZtOdPdsDiagnostic& d);
Finding DescribeSetName(const ZtOdPdsDiagnostic& d);
Finding DescribeSection(const ZtOdPdsDiagnostic& d);
Finding DescribeSetOutsideSection(const ZtOdPdsDiagnostic& d);
Finding DescribeMarkerLine(const ZtOdPdsDiagnostic& d);
Finding DescribeIgnoredLines(const ZtOdPdsDiagnostic& d);
