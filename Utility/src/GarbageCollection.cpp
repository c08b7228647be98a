#include "Utility/src/GarbageCollection.h"

GarbageCollection* GarbageCollection::pGC = nullptr;
