#pragma once

namespace moorline {

class MprisPlayer;
class Workspace;

/// Brings a player to the front, as mprisOpening() has it.
void bringForward(const MprisPlayer &player, Workspace &workspace);

} // namespace moorline
