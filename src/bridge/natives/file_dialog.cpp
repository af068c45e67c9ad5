#include "widgets/file_dialog.h"

WIDGET_NATIVE(jint, FileDialog, New, (jint owner, jint style), (owner, style))
WIDGET_NATIVE(void, FileDialog, SetTitle, (jint dialog, jstring title), (dialog, title))
WIDGET_NATIVE(void, FileDialog, SetFileName, (jint dialog, jstring name), (dialog, name))
WIDGET_NATIVE(void, FileDialog, SetFilterPath, (jint dialog, jstring path), (dialog, path))
WIDGET_NATIVE(jboolean, FileDialog, Open, (jint dialog), (dialog))
WIDGET_NATIVE(jstring, FileDialog, GetFilterPath, (jint dialog), (dialog))
WIDGET_NATIVE(jobjectArray, FileDialog, GetFileNames, (jint dialog), (dialog))
