#include "session/chunkrenderer.h"
// stub
ChunkRenderer::Piece ChunkRenderer::renderForDisplay(const rxData &, const FormatSetting &) { return {}; }
QString ChunkRenderer::renderForLog(const rxData &, const FormatSetting &) { return {}; }
