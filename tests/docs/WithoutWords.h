/// A class with words and a function without.
class WithWords
{
public:
    void withoutWords();
};
