#pragma once

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <type_traits>
#include <utility>

namespace q1framework
{

// The framework's one growable array: elements by value in one block from the C allocator.
//
// Growth: when full, the capacity becomes the count plus the larger of 5 and count / 2 (5, 10, 15,
// 22, 33, 49, ...). The block never shrinks; it is freed with the array. Elements are moved byte by
// byte (realloc, memmove), so every element type must tolerate being relocated that way; the
// framework's handles (String, Var, MemoryBlock, pointers) all do. Allocation failure is not
// checked.
//
// Thread contract: none; an array belongs to one thread at a time, or to its owner's lock.
template <typename T>
class Array
{
public:
    Array() = default;

    Array(const Array& other) { copyFrom(other); }

    Array(Array&& other) noexcept : data(other.data), count(other.count), capacity(other.capacity)
    {
        other.data = nullptr;
        other.count = other.capacity = 0;
    }

    Array& operator=(const Array& other)
    {
        if (this != &other)
        {
            clear();
            copyFrom(other);
        }
        return *this;
    }

    Array& operator=(Array&& other) noexcept
    {
        if (this != &other)
        {
            clear();
            std::free(data);
            data = other.data;
            count = other.count;
            capacity = other.capacity;
            other.data = nullptr;
            other.count = other.capacity = 0;
        }
        return *this;
    }

    ~Array()
    {
        clear();
        std::free(data);
    }

    int32_t getCount() const { return count; }
    int32_t getCapacity() const { return capacity; }
    bool isEmpty() const { return count == 0; }

    // Unchecked element access.
    T& operator[](int32_t index) { return data[index]; }
    const T& operator[](int32_t index) const { return data[index]; }
    T& getLast() { return data[count - 1]; }

    T* begin() { return data; }
    T* end() { return data + count; }
    const T* begin() const { return data; }
    const T* end() const { return data + count; }

    // Appends a copy of item, which may be an element of this array; returns its index.
    int32_t add(const T& item)
    {
        if (count < capacity)
        {
            new (data + count) T(item);
            return count++;
        }
        // Growing moves the block, and item may live in it: it is copied out first.
        T copy(item);
        growIfFull();
        new (data + count) T(std::move(copy));
        return count++;
    }

    // Inserts a copy of item before index; a negative index or one above the count appends.
    // item may be an element of this array.
    void insert(int32_t index, const T& item)
    {
        if (index < 0 || index > count)
            index = count;
        // Growing and shifting both move elements, item among them perhaps: it is copied out first.
        T copy(item);
        growIfFull();
        std::memmove(static_cast<void*>(data + index + 1), static_cast<const void*>(data + index),
                     sizeof(T) * static_cast<size_t>(count - index));
        new (data + index) T(std::move(copy));
        ++count;
    }

    // Destroys the element at index and closes the gap; an index out of range does nothing.
    void removeAt(int32_t index)
    {
        if (index < 0 || index >= count)
            return;
        data[index].~T();
        std::memmove(static_cast<void*>(data + index), static_cast<const void*>(data + index + 1),
                     sizeof(T) * static_cast<size_t>(count - index - 1));
        --count;
    }

    // Index of the first element equal to item, -1 if there is none.
    int32_t getFirstIndexOf(const T& item) const
    {
        for (int32_t i = 0; i < count; ++i)
            if (data[i] == item)
                return i;
        return -1;
    }

    bool contains(const T& item) const { return getFirstIndexOf(item) >= 0; }

    // Appends item unless an equal element is present; answers whether it was added.
    bool addIfNotAlreadyThere(const T& item)
    {
        if (contains(item))
            return false;
        add(item);
        return true;
    }

    // Removes the first element equal to item, keeping the order; answers whether one was found.
    bool removeFirstMatching(const T& item)
    {
        const int32_t index = getFirstIndexOf(item);
        removeAt(index);
        return index >= 0;
    }

    // Destroys every element; keeps the block.
    void clear()
    {
        if constexpr (!std::is_trivially_destructible_v<T>)
            for (int32_t i = 0; i < count; ++i)
                data[i].~T();
        count = 0;
    }

    // Makes room for at least minimumCapacity elements without growing later.
    void ensureCapacity(int32_t minimumCapacity)
    {
        if (minimumCapacity > capacity)
            reallocate(minimumCapacity);
    }

private:
    void growIfFull()
    {
        if (count < capacity)
            return;
        const int32_t grown = count + (count / 2 > 5 ? count / 2 : 5);
        if (grown > capacity)
            reallocate(grown);
    }

    void reallocate(int32_t newCapacity)
    {
        capacity = newCapacity;
        data = static_cast<T*>(std::realloc(static_cast<void*>(data), sizeof(T) * static_cast<size_t>(capacity)));
    }

    void copyFrom(const Array& other)
    {
        ensureCapacity(other.count);
        for (int32_t i = 0; i < other.count; ++i)
            new (data + i) T(other.data[i]);
        count = other.count;
    }

    T* data = nullptr;
    int32_t count = 0;
    int32_t capacity = 0;
};

}  // namespace q1framework
