// The natives of com.nuvik.wyx.dovr.OS, the widget layer.

#include "bridge/natives/native.h"
#include "control/adjustable.h"
#include "control/appearance.h"
#include "control/control.h"
#include "control/scrollable.h"
#include "control/shell.h"
#include "display/display.h"
#include "display/services.h"
#include "display/widget.h"
#include "graphics/color.h"
#include "graphics/cursor.h"
#include "graphics/device.h"
#include "graphics/drawing.h"
#include "graphics/font.h"
#include "graphics/graphics.h"
#include "image/image.h"
#include "menu/menu.h"
#include "menu/menu_item.h"
#include "sound/sound.h"
#include "widgets/button.h"
#include "widgets/choice.h"
#include "widgets/clipboard.h"
#include "widgets/file_dialog.h"
#include "widgets/label.h"
#include "widgets/list.h"
#include "widgets/scrollbar.h"
#include "widgets/text.h"

WIDGET_NATIVE(void, AbstractMenuItem, SetEnabled, (jint item, jboolean enabled), (item, enabled))

WIDGET_NATIVE(jint, AbstractTextComponent, GetCharCount, (jint text), (text))
WIDGET_NATIVE(jintArray, AbstractTextComponent, GetSelection, (jint text), (text))
WIDGET_NATIVE(jstring, AbstractTextComponent, GetSelectionText, (jint text), (text))
WIDGET_NATIVE(jstring, AbstractTextComponent, GetText, (jint text), (text))
WIDGET_NATIVE(void, AbstractTextComponent, Replace,
              (jint text, jstring characters, jint start, jint end), (text, characters, start, end))
WIDGET_NATIVE(void, AbstractTextComponent, SelectAll, (jint text), (text))
WIDGET_NATIVE(void, AbstractTextComponent, SetCaretPosition, (jint text, jint position),
              (text, position))
WIDGET_NATIVE(void, AbstractTextComponent, SetEchoChar, (jint text, jchar echo), (text, echo))
WIDGET_NATIVE(void, AbstractTextComponent, SetEditable, (jint text, jboolean editable),
              (text, editable))
WIDGET_NATIVE(void, AbstractTextComponent, SetSelection, (jint text, jint start, jint end),
              (text, start, end))
WIDGET_NATIVE(void, AbstractTextComponent, SetText, (jint text, jstring characters),
              (text, characters))

WIDGET_NATIVE(jint, Adjustable, GetMinimum, (jint bar), (bar))
WIDGET_NATIVE(jint, Adjustable, GetMaximum, (jint bar), (bar))
WIDGET_NATIVE(jint, Adjustable, GetValue, (jint bar), (bar))
WIDGET_NATIVE(jint, Adjustable, GetVisibleAmount, (jint bar), (bar))
WIDGET_NATIVE(void, Adjustable, SetMinimum, (jint bar, jint value), (bar, value))
WIDGET_NATIVE(void, Adjustable, SetMaximum, (jint bar, jint value), (bar, value))
WIDGET_NATIVE(void, Adjustable, SetValue, (jint bar, jint value), (bar, value))
WIDGET_NATIVE(void, Adjustable, SetVisibleAmount, (jint bar, jint amount), (bar, amount))
WIDGET_NATIVE(void, Adjustable, SetUnitIncrement, (jint bar, jint value), (bar, value))
WIDGET_NATIVE(void, Adjustable, SetBlockIncrement, (jint bar, jint value), (bar, value))

WIDGET_NATIVE(void, Button, SetLabel, (jint button, jstring label), (button, label))
WIDGET_NATIVE(void, Button, SetSelection, (jint button, jboolean selected), (button, selected))

WIDGET_NATIVE(jint, CascadeMenuItem, New, (jint menu, jint index), (menu, index))
WIDGET_NATIVE(void, CascadeMenuItem, SetMenu, (jint item, jint menu), (item, menu))

WIDGET_NATIVE(jint, Checkbox, New, (jint parent, jint style), (parent, style))

WIDGET_NATIVE(jint, Choice, New, (jint parent), (parent))
WIDGET_NATIVE(void, Choice, AddItem, (jint choice, jstring item, jint index), (choice, item, index))
WIDGET_NATIVE(void, Choice, RemoveItem, (jint choice, jint index), (choice, index))
WIDGET_NATIVE(void, Choice, RemoveAllItems, (jint choice), (choice))
WIDGET_NATIVE(void, Choice, SelectItem, (jint choice, jint index), (choice, index))
WIDGET_NATIVE(jint, Choice, GetSelectedItemIndex, (jint choice), (choice))

WIDGET_NATIVE(jstring, Clipboard, GetText, (), ())
WIDGET_NATIVE(void, Clipboard, SetText, (jstring text), (text))

WIDGET_NATIVE(jint, Color, GetRed, (jint color), (color))
WIDGET_NATIVE(jint, Color, GetGreen, (jint color), (color))
WIDGET_NATIVE(jint, Color, GetBlue, (jint color), (color))

WIDGET_NATIVE(jint, Composite, New, (jint parent, jint style), (parent, style))

WIDGET_NATIVE(jintArray, Control, GetMinimumSize, (jint control), (control))
WIDGET_NATIVE(void, Control, SetEnabled, (jint control, jboolean enabled), (control, enabled))
WIDGET_NATIVE(void, Control, SetRedraw, (jint control, jboolean redraw), (control, redraw))
WIDGET_NATIVE(jboolean, Control, ForceFocus, (jint control), (control))
WIDGET_NATIVE(void, Control, SetBackground, (jint control, jint color), (control, color))
WIDGET_NATIVE(void, Control, SetForeground, (jint control, jint color), (control, color))
WIDGET_NATIVE(jint, Control, GetBackgroundRGB, (jint control), (control))
WIDGET_NATIVE(jint, Control, GetForegroundRGB, (jint control), (control))
WIDGET_NATIVE(jboolean, Control, InheritsBackground, (jint control), (control))
WIDGET_NATIVE(void, Control, SetFont, (jint control, jint font), (control, font))
WIDGET_NATIVE(jint, Control, GetDefaultFont, (jint control), (control))
WIDGET_NATIVE(void, Control, SetCursor, (jint control, jint cursor), (control, cursor))
WIDGET_NATIVE(void, Control, MoveAbove, (jint control, jint other), (control, other))
WIDGET_NATIVE(void, Control, MoveBelow, (jint control, jint other), (control, other))
WIDGET_NATIVE(void, Control, CopyArea,
              (jint control, jint image, jint x, jint y, jint width, jint height),
              (control, image, x, y, width, height))

WIDGET_NATIVE(jint, Cursor, New, (jint device, jint type), (device, type))
WIDGET_NATIVE(void, Cursor, Dispose, (jint cursor), (cursor))

WIDGET_NATIVE(jintArray, Device, GetDPI, (jint device), (device))
WIDGET_NATIVE(jint, Device, GetDepth, (jint device), (device))
WIDGET_NATIVE(void, Device, CopyArea,
              (jint device, jint graphics, jint x, jint y, jint width, jint height),
              (device, graphics, x, y, width, height))
WIDGET_NATIVE(jintArray, Device, GetDirectPaletteMasks, (jint device), (device))
WIDGET_NATIVE(void, Device, GetIndexedPalette,
              (jint device, jbyteArray reds, jbyteArray greens, jbyteArray blues),
              (device, reds, greens, blues))
WIDGET_NATIVE(jboolean, Device, IsDirect, (jint device), (device))
WIDGET_NATIVE(jint, Device, GetAvailableAcceleratedMemory, (jint device), (device))

WIDGET_NATIVE(void, Display, Beep, (jint display), (display))
WIDGET_NATIVE(jint, Display, GetSystemColor, (jint device, jint id), (device, id))
WIDGET_NATIVE(jintArray, Display, GetInsets, (jint display), (display))
WIDGET_NATIVE(jboolean, Display, PostKeyEvent, (jint display, jint type, jint key, jchar character),
              (display, type, key, character))
WIDGET_NATIVE(jboolean, Display, PostPointerEvent, (jint display, jint type, jint button),
              (display, type, button))
WIDGET_NATIVE(jboolean, Display, PostPointerMoveEvent, (jint display, jint x, jint y),
              (display, x, y))
WIDGET_NATIVE(void, Display, ClearFocus, (jint display), (display))
WIDGET_NATIVE(void, Display, SetFullScreenShell, (jint display, jint shell), (display, shell))

WIDGET_NATIVE(jint, DropDownMenu, New, (jint owner), (owner))

WIDGET_NATIVE(jint, FileDialog, New, (jint owner, jint style), (owner, style))
WIDGET_NATIVE(void, FileDialog, SetTitle, (jint dialog, jstring title), (dialog, title))
WIDGET_NATIVE(void, FileDialog, SetFileName, (jint dialog, jstring name), (dialog, name))
WIDGET_NATIVE(void, FileDialog, SetFilterPath, (jint dialog, jstring path), (dialog, path))
WIDGET_NATIVE(jboolean, FileDialog, Open, (jint dialog), (dialog))
WIDGET_NATIVE(jstring, FileDialog, GetFilterPath, (jint dialog), (dialog))
WIDGET_NATIVE(jobjectArray, FileDialog, GetFileNames, (jint dialog), (dialog))

WIDGET_NATIVE(jint, Font, NewLogical, (jint device, jint family, jint points, jint style),
              (device, family, points, style))
WIDGET_NATIVE(jint, Font, StringAdvance, (jint font, jstring text), (font, text))
WIDGET_NATIVE(jstring, Font, GetName, (jint font), (font))
WIDGET_NATIVE(jint, Font, GetStyle, (jint font), (font))

WIDGET_NATIVE(void, Graphics, ClearClipping, (jint graphics), (graphics))
WIDGET_NATIVE(void, Graphics, SetXORMode, (jint graphics, jboolean on), (graphics, on))
WIDGET_NATIVE(void, Graphics, SetLineNodeStyle,
              (jint graphics, jint first, jint second, jint third),
              (graphics, first, second, third))
WIDGET_NATIVE(void, Graphics, FillBackground,
              (jint graphics, jint color, jint x, jint y, jint width, jint height),
              (graphics, color, x, y, width, height))
WIDGET_NATIVE(void, Graphics, CopyArea,
              (jint graphics, jint sourceX, jint sourceY, jint width, jint height, jint targetX,
               jint targetY),
              (graphics, sourceX, sourceY, width, height, targetX, targetY))
WIDGET_NATIVE(void, Graphics, DrawImageRegion,
              (jint graphics, jint image, jint sourceX, jint sourceY, jint sourceWidth,
               jint sourceHeight, jint targetX, jint targetY, jint targetWidth, jint targetHeight),
              (graphics, image, sourceX, sourceY, sourceWidth, sourceHeight, targetX, targetY,
               targetWidth, targetHeight))

WIDGET_NATIVE(jint, Image, NewFromFile, (jint device, jstring path), (device, path))
WIDGET_NATIVE(jint, Image, NewFromHandle, (jint device, jint image), (device, image))
WIDGET_NATIVE(jint, Image, Flip,
              (jint image, jboolean horizontal, jboolean vertical, jint x, jint y, jint width,
               jint height),
              (image, horizontal, vertical, x, y, width, height))
WIDGET_NATIVE(jboolean, Image, IsDirect, (jint image), (image))
WIDGET_NATIVE(jint, Image, GetTransparentColor, (jint image), (image))
WIDGET_NATIVE(jintArray, Image, GetDirectPaletteMasks, (jint image), (image))
WIDGET_NATIVE(void, Image, GetIndexedPalette,
              (jint image, jbyteArray reds, jbyteArray greens, jbyteArray blues),
              (image, reds, greens, blues))
WIDGET_NATIVE(jintArray, Image, GetPixelsHighColor, (jint image), (image))
WIDGET_NATIVE(jbyteArray, Image, GetPixelsLowColor, (jint image), (image))
WIDGET_NATIVE(void, Image, SetRGB, (jint image, jint x, jint y, jint rgb), (image, x, y, rgb))

WIDGET_NATIVE(jint, Label, New, (jint parent, jint style), (parent, style))
WIDGET_NATIVE(void, Label, SetAlignment, (jint label, jint alignment), (label, alignment))
WIDGET_NATIVE(void, Label, SetText, (jint label, jstring text), (label, text))

WIDGET_NATIVE(void, LabeledMenuItem, SetText, (jint item, jstring text, jstring acceleratorText),
              (item, text, acceleratorText))
WIDGET_NATIVE(void, LabeledMenuItem, SetAccelerator, (jint item, jint accelerator),
              (item, accelerator))
WIDGET_NATIVE(void, LabeledMenuItem, SetFont, (jint item, jint font), (item, font))

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

WIDGET_NATIVE(void, Menu, SetFont, (jint menu, jint font), (menu, font))

WIDGET_NATIVE(jint, MenuBar, New, (jint shell), (shell))

WIDGET_NATIVE(jint, Platform, GetCapability, (jint id), (id))

WIDGET_NATIVE(jint, PopupMenu, New, (jint owner), (owner))
WIDGET_NATIVE(void, PopupMenu, Show, (jint menu, jint x, jint y), (menu, x, y))

WIDGET_NATIVE(jint, PushButton, New, (jint parent, jint style), (parent, style))

WIDGET_NATIVE(jint, PushMenuItem, New, (jint menu, jint index), (menu, index))

WIDGET_NATIVE(jint, RadioButton, New, (jint parent, jint style), (parent, style))

WIDGET_NATIVE(jintArray, Scrollable, GetAdjustableBounds, (jint scrollable, jint bar),
              (scrollable, bar))
WIDGET_NATIVE(jint, Scrollable, GetHorizontalBar, (jint scrollable), (scrollable))
WIDGET_NATIVE(jint, Scrollable, GetVerticalBar, (jint scrollable), (scrollable))
WIDGET_NATIVE(void, Scrollable, SetAdjustableEnabled, (jint scrollable, jint bar, jboolean enabled),
              (scrollable, bar, enabled))
WIDGET_NATIVE(void, Scrollable, SetAdjustableVisible, (jint scrollable, jint bar, jboolean visible),
              (scrollable, bar, visible))

WIDGET_NATIVE(jint, Scrollbar, New, (jint parent), (parent))
WIDGET_NATIVE(void, Scrollbar, SetOrientation, (jint bar, jint orientation), (bar, orientation))

WIDGET_NATIVE(jint, SeparatorItem, New, (jint menu, jint index), (menu, index))

WIDGET_NATIVE(jint, Shell, NewChild, (jint parent, jint style), (parent, style))
WIDGET_NATIVE(jboolean, Shell, GetMinimized, (jint shell), (shell))
WIDGET_NATIVE(void, Shell, SetMinimized, (jint shell, jboolean minimized), (shell, minimized))
WIDGET_NATIVE(void, Shell, SetImage, (jint shell, jint image), (shell, image))
WIDGET_NATIVE(void, Shell, SetResizable, (jint shell, jboolean resizable), (shell, resizable))
WIDGET_NATIVE(void, Shell, SetMenuBar, (jint shell, jint bar), (shell, bar))

WIDGET_NATIVE(jint, Sound, New, (), ())
WIDGET_NATIVE(void, Sound, Play, (jint sound, jbyteArray data, jint length, jint loops),
              (sound, data, length, loops))
WIDGET_NATIVE(void, Sound, Stop, (jint sound), (sound))
WIDGET_NATIVE(void, Sound, Dispose, (jint sound), (sound))
WIDGET_NATIVE(jint, Sound, GetPreferredChunkSize, (jint sound), (sound))

WIDGET_NATIVE(jint, StateMenuItem, New, (jint menu, jint index, jint style), (menu, index, style))
WIDGET_NATIVE(void, StateMenuItem, SetSelection, (jint item, jboolean checked), (item, checked))

WIDGET_NATIVE(jint, TextArea, New, (jint parent, jint style), (parent, style))
WIDGET_NATIVE(jintArray, TextArea, GetMinimumSize, (jint area, jint rows, jint columns),
              (area, rows, columns))

WIDGET_NATIVE(jint, TextField, New, (jint parent, jint style), (parent, style))
WIDGET_NATIVE(jintArray, TextField, GetMinimumSize, (jint field, jint columns), (field, columns))
