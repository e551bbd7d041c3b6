#pragma once

namespace moorline {

class MprisPlayer;
class Workspace;

/// Brings a player to the front: the windows of its desktop entry, else those of its process. One without windows is
/// asked to show itself, else started. Nothing happens where all of that cannot be.
void bringForward(const MprisPlayer &player, Workspace &workspace);

} // namespace moorline
