/* What zemvolt11 offers to companion libraries: native code of your own that adds widgets to the
   toolkit. Link with the import library of zemvolt11.def, which lies beside this file.

   Threads. A display and its windows belong to the thread that made the display: window procedures
   run there. Where nothing else is said a function may be called on any thread; "display thread"
   means that one only.

   Records. A widget's handle in Java is the address of its record. A companion's record starts with
   a ControlRecord; what follows is its own, zero when it is made. The fields that are listed here
   keep their places. Write only those that are said to be yours.

   Errors. A function that may fail takes an ErrorRecord, which the caller has set to zero, and
   which may be null. A record is for one call: the last error of it is the one that is told. Texts
   are static unless ownsMessage says otherwise.

   Natives. What Java calls is "extern C", JNICALL, and exported under its JNI name. When its record
   tells of an error it calls WYX_ErrorHandler with the class and method of the native
   ("Gauge_New"), and returns zero. */
#ifndef ZEMVOLT11_H
#define ZEMVOLT11_H

#include <jni.h>
#include <windows.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct ErrorRecord {
    LONG code;              /* 0 without error; negative numbers are the toolkit's own */
    const wchar_t* message; /* null for none */
    BOOL ownsMessage;       /* the message is a heap block that WYX_ErrorHandler frees */
} ErrorRecord;

/* Codes of the toolkit's own. */
#define WYX_ERROR_NOT_SUPPORTED (-1)
#define WYX_ERROR_FAILED (-3)
#define WYX_ERROR_OUT_OF_MEMORY (-4)

/* A Java colour's handle. What follows is the toolkit's own. */
typedef struct ColorRecord {
    COLORREF color;
} ColorRecord;

typedef struct DisplayRecord DisplayRecord;   /* a display; it owns its thread's windows */
typedef struct CallbackLookup CallbackLookup; /* the display's registry of callbacks */
typedef struct CallbackTarget CallbackTarget; /* the Java object that hears a widget's events */
typedef struct FontRecord FontRecord;         /* a Java font's handle */
typedef struct ImageRecord ImageRecord;       /* a Java image's handle */
typedef struct ShellRecord ShellRecord;       /* a Java shell's handle */
typedef struct ControlRecord ControlRecord;   /* a Java control's handle; below */
typedef struct ControlRecord WidgetRecord;    /* its head, which every widget has */

/* Ends what a record stands for, and not the record. -1, with the error set, refuses: the widget
   lives on then. */
typedef int (*WidgetDispose)(WidgetRecord* widget, ErrorRecord* error);

struct ControlRecord {
    DisplayRecord* display;         /* Control_GetDisplay tells it also when it is null here */
    CallbackTarget* callbackTarget; /* null while nobody listens */
    DWORD style;                    /* the Java style bits of its making */
    WidgetDispose dispose;          /* yours; at first _Dispose_Control */
    HWND hwnd;
    WNDPROC classProc; /* of the window class: _Control_Proc passes on to it */
    ControlRecord* parent;
    BOOL redraw;             /* drawing is enabled */
    ColorRecord* background; /* null: WYX_GET_BACKGROUND tells the colour */
    ColorRecord* foreground; /* null: WYX_GET_FOREGROUND tells the colour */
};

/* The size of the toolkit's own part of every control record: yours starts behind it. */
#define WYX_CONTROL_RECORD_SIZE 56

/* What a window procedure is asked besides the system's messages. */
#define WYX_GET_MINIMUM_SIZE (WM_APP + 8)  /* wParam POINT* to fill in, pixels; answer 0 */
#define WYX_GET_FOREGROUND (WM_APP + 0x18) /* answers the default COLORREF to draw in */
#define WYX_GET_BACKGROUND (WM_APP + 0x0F) /* answers the default COLORREF to fill with */

/* Callbacks and their signatures. The display's program says which methods they call. */
#define WYX_CB_SELECTION 0    /* "()V" */
#define WYX_CB_WINDOW_EVENT 2 /* "(I)V": the event */
#define WYX_CB_SCROLL 3       /* "(II)V": the value, the kind */
#define WYX_CB_PAINT 10       /* "(IIII)V": x, y, width, height */

/* -- Java ------------------------------------------------------------------------------------ */

/* The environment of the calling thread. One that the VM does not know is attached: *attached is 1
   then, and the caller detaches it. The VM's result, 0 for success. */
jint getEnv(CallbackLookup* lookup, JNIEnv** env, jint* attached);

/* Local references, or null with the VM's exception pending. A null text is a null String. */
jstring convertToJavaString(JNIEnv* env, const wchar_t* text);
jintArray createJavaRect(JNIEnv* env, jint x, jint y, jint width, jint height); /* int[4] */
jintArray createJavaPoint(JNIEnv* env, jint x, jint y);                         /* int[2] */

/* -- Errors ---------------------------------------------------------------------------------- */

/* A negative code is kept with the message. Any other is a system error: the system's text is put
   behind the message. The message stays the caller's and must be static. An earlier error's is
   freed if the record owns it. */
void Win32Error_SetError(ErrorRecord* error, LONG code, const wchar_t* message);

/* The code; 0 for null. */
LONG WYX_GetError(const ErrorRecord* error);

/* Tells Java's error handler, on the calling thread, and frees a message that the record owns. The
   VM ends when no handler is set. Nothing is told while an exception is pending. */
void WYX_ErrorHandler(JNIEnv* env, const char* native, ErrorRecord* error);

/* -- Callbacks ------------------------------------------------------------------------------- */

/* The registry of the target's display; null for a null target. */
CallbackLookup* getCallbackLookup(CallbackTarget* target);

/* Calls the Java method that is registered under the id. The arguments follow the target. Without
   target, or method, nothing happens. What the method throws stays pending. Fire on the display
   thread: Java's widgets belong to it. */
void vaCallback(DWORD id, const char* signature, CallbackTarget* target, ...);

/* The same for methods that answer; 1 for true. */
jint vaCallbackBoolean(DWORD id, const char* signature, CallbackTarget* target, ...);

/* -- Displays -------------------------------------------------------------------------------- */

/* The major version of the system's common controls; 0 with the error set when it is not known. */
DWORD _Display_GetComCtrlMajorVersion(DisplayRecord* display, ErrorRecord* error);

/* Begins or ends the modality of a shell. Display thread. */
void Display_UpdateModalShellVisibility(DisplayRecord* display, ShellRecord* shell, BOOL modal);

/* The control's display, which stays its own. */
DisplayRecord* Control_GetDisplay(ControlRecord* control);

/* -- Controls -------------------------------------------------------------------------------- */

/* Makes a window of the class in the parent, which may not be null, and its record of recordSize
   bytes. The window is made on the display
   thread, whichever calls. A null procedure stands for _Control_Proc; another passes to
   _Control_Proc what it does not consume. A class of your own is registered with CS_GLOBALCLASS:
   the toolkit makes the window. windowStyle wants the bits of _Control_Style. The record
   is Java's to dispose of through Widget_Dispose; null with the error set on failure. */
ControlRecord* _Control_New(const wchar_t* className, UINT recordSize, WNDPROC procedure,
                            ControlRecord* parent, DWORD javaStyle, DWORD windowStyle,
                            DWORD extendedStyle, ErrorRecord* error);

/* The window style of every child control. */
DWORD _Control_Style(void);

/* What "dispose" starts with: destroys the window and its children. A procedure of yours ends with
   it. */
int _Dispose_Control(WidgetRecord* control, ErrorRecord* error);

/* The procedure of all controls. Display thread. */
LRESULT CALLBACK _Control_Proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/* The control's own way with these messages, for a procedure that must do something between. The
   keys tell whether a listener has consumed the message. Display thread. */
jint _Control_ProcessWmChar(HWND window, WPARAM wParam, LPARAM lParam);
jint _Control_ProcessWmKeyDown(HWND window, WPARAM wParam, LPARAM lParam);
void _Control_ProcessWmLButtonDown(HWND window, WPARAM wParam, LPARAM lParam);
void _Control_ProcessWmRButtonDown(HWND window, WPARAM wParam, LPARAM lParam);

/* Invalidates the control and what lies in it. Display thread. */
void Control_Redraw(ControlRecord* control, ErrorRecord* error);

/* The width of the window's border, pixels. */
int _Control_GetBorderWidth(HWND window);

/* The font of controls without one; the system's own, not to be deleted. */
HFONT _Control_GetDefaultFont(void);

/* What a control does when Java sets these; null takes them back. Colours and fonts stay their
   owner's and must outlive their use. Display thread. */
void _Control_SetBackground(ControlRecord* control, ColorRecord* color, ErrorRecord* error);
void _Control_SetForeground(ControlRecord* control, ColorRecord* color, ErrorRecord* error);
void _Control_SetFont(ControlRecord* control, FontRecord* font, ErrorRecord* error);

/* -- Scrollables: controls with scroll bars of their own, and what may hold others ------------ */

/* The window style for the Java style: 0x10000 horizontal, 0x20000 vertical bar. */
DWORD _Scrollable_Style(DWORD javaStyle);

/* Stands between a scrollable's procedure and _Control_Proc. Display thread. */
LRESULT CALLBACK _Scrollable_Proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

int _Dispose_Scrollable(WidgetRecord* scrollable, ErrorRecord* error);

/* -- Fonts and images ------------------------------------------------------------------------ */

/* Fills in height (of the points), weight, slant and lines (2 bold, 4 italic, 8 underlined, 16
   struck out) of a zeroed description. */
void _Font_FillInFont(LOGFONTW* font, jint points, jint style);

/* Pixels. */
void _Image_GetSize(ImageRecord* image, jint* width, jint* height, ErrorRecord* error);

#ifdef __cplusplus
}
#endif

#endif
