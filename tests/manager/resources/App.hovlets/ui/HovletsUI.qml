import QtQuick 2.15

Rectangle {
    width: 80
    height: 40
}
