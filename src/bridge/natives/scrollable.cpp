#include "control/scrollable.h"
#include "bridge/native.h"

BASE_NATIVE(jintArray, Scrollable, GetInsets, (jint scrollable), (scrollable))
