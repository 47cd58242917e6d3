<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fi" sourcelanguage="en">
<context>
    <name></name>
    <message>
        <source>Coast light</source>
        <translation>Rannikon valo</translation>
    </message>
</context>
</TS>
