#pragma once
// What graphics contexts draw. Outlines have the foreground colour and the line width, fills the
// background colour. Angles are degrees counter-clockwise from three o'clock. Any thread.

#include "graphics/graphics.h"

// The end points are part of the line.
void Graphics_DrawLine(GraphicsRecord* graphics, jint x1, jint y1, jint x2, jint y2,
                       ErrorRecord* error);
void Graphics_DrawRectangle(GraphicsRecord* graphics, jint x, jint y, jint width, jint height,
                            ErrorRecord* error);
void Graphics_DrawRoundRectangle(GraphicsRecord* graphics, jint x, jint y, jint width, jint height,
                                 jint arcWidth, jint arcHeight, ErrorRecord* error);
void Graphics_DrawOval(GraphicsRecord* graphics, jint x, jint y, jint width, jint height,
                       ErrorRecord* error);
void Graphics_DrawArc(GraphicsRecord* graphics, jint x, jint y, jint width, jint height,
                      jint startAngle, jint arcAngle, ErrorRecord* error);

// points: x and y in turn; count: how many numbers of them count.
void Graphics_DrawPolygon(GraphicsRecord* graphics, IntArguments points, CountOfArray count,
                          ErrorRecord* error);
void Graphics_DrawPolyline(GraphicsRecord* graphics, IntArguments points, CountOfArray count,
                           ErrorRecord* error);
void Graphics_FillPolygon(GraphicsRecord* graphics, IntArguments points, CountOfArray count,
                          ErrorRecord* error);

void Graphics_FillRectangle(GraphicsRecord* graphics, jint x, jint y, jint width, jint height,
                            ErrorRecord* error);
void Graphics_FillRoundRectangle(GraphicsRecord* graphics, jint x, jint y, jint width, jint height,
                                 jint arcWidth, jint arcHeight, ErrorRecord* error);
void Graphics_FillOval(GraphicsRecord* graphics, jint x, jint y, jint width, jint height,
                       ErrorRecord* error);
void Graphics_FillArc(GraphicsRecord* graphics, jint x, jint y, jint width, jint height,
                      jint startAngle, jint arcAngle, ErrorRecord* error);

// In the colour and without inverting, whatever the context's state.
void Graphics_FillBackground(GraphicsRecord* graphics, ColorRecord* color, jint x, jint y,
                             jint width, jint height, ErrorRecord* error);

// flags: 1 breaks lines at words, 2 expands tabs, 4 takes & as a mnemonic mark, 8 leaves the
// background. A null text draws nothing.
void Graphics_DrawString(GraphicsRecord* graphics, const wchar_t* text, jint x, jint y, jint flags,
                         ErrorRecord* error);

void Graphics_CopyArea(GraphicsRecord* graphics, jint sourceX, jint sourceY, jint width,
                       jint height, jint targetX, jint targetY, ErrorRecord* error);

// Transparent pixels of the image leave the background; those of an image with alpha are blended.
void Graphics_DrawImage(GraphicsRecord* graphics, ImageRecord* image, jint x, jint y,
                        ErrorRecord* error);

// Stretches the region of the image where the sizes differ.
void Graphics_DrawImageRegion(GraphicsRecord* graphics, ImageRecord* image, jint sourceX,
                              jint sourceY, jint sourceWidth, jint sourceHeight, jint targetX,
                              jint targetY, jint targetWidth, jint targetHeight,
                              ErrorRecord* error);

// Whether the rectangle meets the clip. An unknown clip is an error and counts as none.
bool Graphics_MeetsClip(HDC dc, jint x, jint y, jint width, jint height, ErrorRecord* error);
