#pragma once

/// How something stands, for people. The marks differ by their shape, so colour is no one's only
/// hint.
enum class Mark
{
    ToDo,     ///< circle
    Optional, ///< dotted circle: can be done, and need not
    Done,     ///< tick
    LookHere, ///< triangle: goes on, and is hardly what is meant
    Blocked,  ///< cross in a square: can't work
    Running   ///< pie with its share
};

/// A mark that asks for attention tints what it stands on.
constexpr bool isLoud(Mark mark)
{
    return mark == Mark::LookHere || mark == Mark::Blocked || mark == Mark::Running;
}
