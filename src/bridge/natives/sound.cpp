#include "sound/sound.h"
#include "bridge/native.h"

WIDGET_NATIVE(jint, Sound, New, (), ())
WIDGET_NATIVE(void, Sound, Play, (jint sound, jbyteArray data, jint length, jint loops),
              (sound, data, length, loops))
WIDGET_NATIVE(void, Sound, Stop, (jint sound), (sound))
WIDGET_NATIVE(void, Sound, Dispose, (jint sound), (sound))
WIDGET_NATIVE(jint, Sound, GetPreferredChunkSize, (jint sound), (sound))
