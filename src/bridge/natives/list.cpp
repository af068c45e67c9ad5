#include "widgets/list.h"

WIDGET_NATIVE(jint, List, New, (jint parent, jint style), (parent, style))
WIDGET_NATIVE(void, List, Add, (jint list, jstring item, jint index), (list, item, index))
WIDGET_NATIVE(void, List, SetItem, (jint list, jint index, jstring item), (list, index, item))
WIDGET_NATIVE(void, List, Remove, (jint list, jint index), (list, index))
WIDGET_NATIVE(void, List, RemoveAll, (jint list), (list))
WIDGET_NATIVE(void, List, Select, (jint list, jint index), (list, index))
WIDGET_NATIVE(void, List, SelectIndices, (jint list, jintArray indices, jint count),
              (list, indices, count))
WIDGET_NATIVE(void, List, Deselect, (jint list, jint index), (list, index))
WIDGET_NATIVE(jboolean, List, IsSelected, (jint list, jint index), (list, index))
WIDGET_NATIVE(jint, List, GetSelectionCount, (jint list), (list))
WIDGET_NATIVE(jint, List, GetSelectionIndex, (jint list), (list))
WIDGET_NATIVE(jintArray, List, GetSelectionIndices, (jint list), (list))
WIDGET_NATIVE(void, List, SetMultipleMode, (jint list, jboolean multiple), (list, multiple))
WIDGET_NATIVE(void, List, SetTopItemIndex, (jint list, jint index), (list, index))
WIDGET_NATIVE(jintArray, List, GetMinimumSize, (jint list, jint rows), (list, rows))
