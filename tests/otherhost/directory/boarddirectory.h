#pragma once

/// Looks boards up in the table "boards" of now.
class BoardDirectory {
public:
    static BoardDirectory* i();

    /// Whether the first board of these ids is anonymous; not where there is none.
    bool isAnonymById(int stockId, int boardId) const;
};
