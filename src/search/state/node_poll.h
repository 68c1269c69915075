#pragma once

/// What a node calls when its countdown has run out, about eight times a second: the search looks at its clock and lets
/// the input be served. Must set a new countdown. May throw any of the exceptions of steering.h through the tree.
class NodePoll {
  public:
    virtual void Poll() = 0;

  protected:
    ~NodePoll() = default;
};
