#pragma once
// Scroll bars that are controls of their own. Any thread.

#include "control/adjustable.h"

struct ScrollbarRecord : AdjustableRecord {};

// A vertical bar of 0 to 100, hidden as every new control.
ScrollbarRecord* Scrollbar_New(ControlRecord* parent, ErrorRecord* error);

// 8 vertical, 16 horizontal; any other keeps the direction. The bar keeps its place and gets a new
// window.
void Scrollbar_SetOrientation(ScrollbarRecord* bar, jint orientation, ErrorRecord* error);
