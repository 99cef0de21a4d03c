#pragma once

/// All of the library's public classes.

#include "qel/base/Color.h"
#include "qel/base/Error.h"
#include "qel/control/Common.h"
#include "qel/model/QELCode.h"
#include "qel/model/Segment.h"
#include "qel/model/SegmentCollection.h"
#include "qel/model/StyleDecoder.h"
#include "qel/model/TextAttribute.h"
#include "qel/model/Word.h"
#include "qel/model/WordCollection.h"
#include "qel/model/cReplaceData.h"
#include "qel/model/iStyle.h"
#include "qel/rtf/RTFParser.h"
#include "qel/tables/QELIndexColors.h"
#include "qel/tables/QELIndexFonts.h"
#include "qel/tables/QELIndexLabels.h"
#include "qel/version.h"
