#include "tags/ZtOdPdsUorVector.h"

#include "tags/ZtOdPdsUnits.h"

ZtLPos3f ZtOdPdsUorVector::ToMaster(double uorsPerMaster) const {
    return {ZtOdPdsUorsToMaster(x, uorsPerMaster), ZtOdPdsUorsToMaster(y, uorsPerMaster),
            ZtOdPdsUorsToMaster(z, uorsPerMaster)};
}

void ZtOdPdsUorVector::FromMaster(const ZtLPos3f& position, double uorsPerMaster) {
    x = ZtOdPdsMasterToUors(position.x, uorsPerMaster);
    y = ZtOdPdsMasterToUors(position.y, uorsPerMaster);
    z = ZtOdPdsMasterToUors(position.z, uorsPerMaster);
}
