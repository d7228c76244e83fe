// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// Turns bytes from the service line into transfers on the bus: "R" or "W", two bytes of address,
// and four bytes of data, highest first. The four bytes of a reply go out in the same order.

module serial_bridge
    import soc_pkg::*;
(
    input  logic         rst,
    input  logic         rx,
    output logic         tx,
    soc_bus_if.initiator bus
);
    bridge_state_e state;
    logic [2:0]    bytes_left;
    logic          writing;
    address_t      address;
    word_t         data;

    logic       tick16;
    logic       in_valid, out_ready;
    logic [7:0] in_byte;

    baud_generator #(
        .DIVISOR(54)
    ) u_baud (
        .clk(bus.clk),
        .rst,
        .\tick*16 (tick16)
    );

    uart_receiver u_receiver (
        .clk          (bus.clk),
        .rst,
        .tick16,
        .line         (rx),
        .valid        (in_valid),
        .data         (in_byte),
        .framing_error(),
        .\break-seen  ()
    );

    uart_transmitter u_transmitter (
        .clk  (bus.clk),
        .rst,
        .tick16,
        .valid(state == BridgeReply && out_ready),
        .data (data[31:24]),
        .ready(out_ready),
        .line (tx)
    );

    always_ff @(posedge bus.clk)
        if (rst) begin
            state      <= BridgeCommand;
            bytes_left <= '0;
            writing    <= 1'b0;
        end else begin
            unique case (state)
                BridgeCommand:
                if (in_valid && (in_byte == "R" || in_byte == "W")) begin
                    writing    <= (in_byte == "W");
                    bytes_left <= 3'd2;
                    state      <= BridgeAddress;
                end

                BridgeAddress:
                if (in_valid) begin
                    address    <= {address[7:0], in_byte};
                    bytes_left <= bytes_left - 1'b1;
                    if (bytes_left == 3'd1) begin
                        bytes_left <= 3'd4;
                        state      <= writing ? BridgeData : BridgeAccess;
                    end
                end

                BridgeData:
                if (in_valid) begin
                    data       <= {data[23:0], in_byte};
                    bytes_left <= bytes_left - 1'b1;
                    if (bytes_left == 3'd1) state <= BridgeAccess;
                end

                BridgeAccess:
                if (bus.ack) begin
                    if (!writing) data <= bus.rdata;
                    bytes_left <= 3'd4;
                    state      <= writing ? BridgeCommand : BridgeReply;
                end

                BridgeReply:
                if (out_ready) begin
                    data       <= {data[23:0], 8'd0};
                    bytes_left <= bytes_left - 1'b1;
                    if (bytes_left == 3'd1) state <= BridgeCommand;
                end

                default: state <= BridgeCommand;
            endcase
        end

    assign bus.req   = (state == BridgeAccess);
    assign bus.we    = writing;
    assign bus.addr  = address;
    assign bus.wdata = data;
endmodule
